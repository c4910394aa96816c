#include "scanners/zuksw/sources/process_table.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <memory>
#include <optional>

#include "scanners/zuksw/files/read_file.h"
#include "scanners/zuksw/walk/directory.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxArguments = std::size_t{1} << 20U;

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

std::optional<std::string> readSmall(int process, const char* file) {
    const FileDescriptor fd(::openat(process, file, O_RDONLY | O_CLOEXEC));
    if (!fd.valid()) return std::nullopt;
    return readAll(fd.get(), kMaxArguments);
}

void readExecutable(int directory, ProcessObject* process) {
    std::array<char, PATH_MAX> path = {};
    const ssize_t length = ::readlinkat(directory, "exe", path.data(), path.size());
    if (length < 0) {
        process->exeKnown = errno == ENOENT;  // a kernel thread has none
        return;
    }
    process->exe.assign(path.data(), static_cast<std::size_t>(length));
    constexpr std::string_view kDeleted = " (deleted)";
    const std::size_t tail = process->exe.size() - std::min(process->exe.size(), kDeleted.size());
    if (process->exe.compare(tail, std::string::npos, kDeleted) == 0) process->exe.resize(tail);
    struct stat facts = {};
    if (::fstatat(directory, "exe", &facts, 0) != 0) return;
    process->device = facts.st_dev;
    process->inode = facts.st_ino;
}

// Null when the process is gone.
std::shared_ptr<const ProcessObject> readProcess(int proc, const std::string& pid) {
    const FileDescriptor directory(::openat(proc, pid.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.valid()) return nullptr;
    auto process = std::make_shared<ProcessObject>();
    process->pid = pid;
    const std::optional<std::string> name = readSmall(directory.get(), "comm");
    struct stat facts = {};
    if (!name || ::fstat(directory.get(), &facts) != 0) return nullptr;
    process->name = name->substr(0, name->rfind('\n'));
    process->uid = std::to_string(facts.st_uid);
    readExecutable(directory.get(), process.get());
    process->arguments = readSmall(directory.get(), "cmdline").value_or("");
    while (!process->arguments.empty() && process->arguments.back() == '\0') process->arguments.pop_back();
    std::replace(process->arguments.begin(), process->arguments.end(), '\0', ' ');
    return process;
}

}  // namespace

Text ProcessObject::property(std::string_view property, Machine& /*machine*/) const {
    if (property == "pid") return Text::of(pid);
    if (property == "name") return Text::of(name);
    if (property == "uid") return Text::of(uid);
    if (!exeKnown) return Text::unknown(toCauses(Cause::kUnreadable));
    return exe.empty() ? Text() : Text::of(exe);
}

void ProcessTable::take() {
    if (!enabled_ || isElsewhere()) return;
    const FileDescriptor proc(::open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!proc.valid()) return;
    DirectoryReader::Buffer buffer = DirectoryReader::makeBuffer();
    DirectoryReader reader(FileDescriptor(::openat(proc.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
                           &buffer);
    DirectoryReader::Entry entry = {};
    while (reader.next(&entry)) {
        if (!isNumber(entry.name)) continue;
        auto process = readProcess(proc.get(), std::string(entry.name));
        if (process) processes_.push_back(std::move(process));
    }
    std::sort(processes_.begin(), processes_.end(), [](const auto& a, const auto& b) {
        return a->pid.size() != b->pid.size() ? a->pid.size() < b->pid.size() : a->pid < b->pid;
    });
}

}  // namespace zuksw
