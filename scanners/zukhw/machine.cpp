#include "scanners/zukhw/machine.h"

#include <cerrno>

#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

Machine::Machine(RootedFs files, Deadline deadline, std::string cpuidSignature)
    : files_(std::move(files)), deadline_(deadline), cpuidSignature_(std::move(cpuidSignature)) {}

void Machine::count(ReadStatus status, std::string_view path) {
    if (status == ReadStatus::Denied) sources_.denied(path);
    if (status == ReadStatus::Missing) sources_.missing();
}

std::optional<std::string> Machine::read(std::string_view path, std::size_t limit) {
    deadline_.check();
    std::string data;
    const ReadStatus status = files_.read(path, &data, limit);
    count(status, path);
    if (status != ReadStatus::Ok) return std::nullopt;
    return data;
}

std::optional<std::string> Machine::readHead(std::string_view path, std::size_t size) {
    deadline_.check();
    std::string data;
    const ReadStatus status = files_.readHead(path, &data, size);
    count(status, path);
    if (status != ReadStatus::Ok) return std::nullopt;
    return data;
}

FileDescriptor Machine::open(std::string_view path) {
    deadline_.check();
    FileDescriptor file = files_.openRegular(path);
    if (file.valid()) return file;
    count(errno == EACCES ? ReadStatus::Denied : ReadStatus::Missing, path);
    return file;
}

std::string Machine::text(std::string_view path) {
    const std::optional<std::string> data = read(path);
    return data ? std::string(trim(*data)) : std::string();
}

std::optional<std::uint64_t> Machine::number(std::string_view path) {
    return parseDecimal(text(path));
}

std::optional<std::int64_t> Machine::signedNumber(std::string_view path) {
    return parseSigned(text(path));
}

std::optional<std::uint64_t> Machine::hexNumber(std::string_view path) {
    return parseHex(text(path));
}

std::vector<std::string> Machine::list(std::string_view path) {
    std::vector<std::string> names = listUnordered(path);
    naturalSort(&names);
    return names;
}

std::vector<std::string> Machine::listUnordered(std::string_view path, std::vector<std::string>* links) {
    deadline_.check();
    std::vector<std::string> names;
    count(files_.list(path, &names, links), path);
    return names;
}

bool Machine::exists(std::string_view path) {
    return facts(path).has_value();
}

std::optional<FileFacts> Machine::facts(std::string_view path, bool followLinks) {
    deadline_.check();
    auto facts = files_.facts(path, followLinks);
    if (!facts && errno == EACCES) sources_.denied(path);  // a folder on the way to it
    return facts;
}

std::string Machine::resolve(std::string_view path) {
    deadline_.check();
    return files_.resolve(path).value_or("");
}

std::string Machine::link(std::string_view path) {
    deadline_.check();
    std::string target;
    files_.readLink(path, &target);
    return target;
}

std::string Machine::linkName(std::string_view path) {
    const std::string target = link(path);
    return target.substr(target.find_last_of('/') + 1);
}
