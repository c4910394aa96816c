#include "scanners/zukhw/update_sources.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "scanners/zukhw/gzip.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kCompressed = ".gz";

struct Log {
    const char* directory;
    const char* name;
    std::vector<PackageUpdate> (*parse)(std::string_view);
};
constexpr Log kApt = {"var/log/apt", "history.log", parseAptHistory};
constexpr Log kDpkg = {"var/log", "dpkg.log", parseDpkgLog};
constexpr Log kDnf = {"var/log", "dnf.rpm.log", parseDnfLog};
constexpr Log kYum = {"var/log", "yum.log", parseYumLog};
constexpr Log kZypp = {"var/log/zypp", "history", parseZyppHistory};

// ".1", ".1.gz", "-20260501.gz": what a log's name ends in once it was rotated away.
bool isRotation(std::string_view suffix) {
    if (endsWith(suffix, kCompressed)) suffix.remove_suffix(kCompressed.size());
    const bool begins = startsWith(suffix, ".") || startsWith(suffix, "-");
    return begins && suffix.size() > 1 && suffix.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

// The names of the log's files, the newest first. Numbers grow with age, dates shrink.
std::vector<std::string> filesOf(Machine& machine, const Log& log) {
    std::vector<std::string> numbered;
    std::vector<std::string> dated;
    const std::string_view name = log.name;
    for (const std::string& file : machine.list(log.directory)) {
        if (!startsWith(file, name)) continue;
        const std::string_view suffix = std::string_view(file).substr(name.size());
        if (suffix.empty()) numbered.insert(numbered.begin(), file);
        if (isRotation(suffix)) (suffix[0] == '.' ? numbered : dated).push_back(file);
    }
    numbered.insert(numbered.end(), dated.rbegin(), dated.rend());
    return numbered;
}

std::string readLog(Machine& machine, const std::string& path) {
    std::string text = machine.read(path, Machine::kTable).value_or("");
    if (!endsWith(path, kCompressed) || text.empty()) return text;
    std::string whole;
    if (!gunzip(text, Machine::kTable, &whole)) machine.sources().malformed(path, 0);
    return whole;
}

std::vector<PackageUpdate> readUpdates(Machine& machine, const Log& log, std::size_t enough) {
    std::vector<PackageUpdate> updates;
    for (const std::string& file : filesOf(machine, log)) {
        std::vector<PackageUpdate> more =
            log.parse(readLog(machine, std::string(log.directory) + '/' + file));
        updates.insert(updates.end(), std::make_move_iterator(more.rbegin()),
                       std::make_move_iterator(more.rend()));
        if (updates.size() >= enough) break;
    }
    return updates;
}

}  // namespace

std::vector<PackageUpdate> readPackageUpdates(Machine& machine, std::size_t enough) {
    std::vector<PackageUpdate> updates = readUpdates(machine, kApt, enough);
    const auto add = [&](std::vector<PackageUpdate> more) {
        updates.insert(updates.end(), more.begin(), more.end());
        return !more.empty();
    };
    if (updates.empty()) add(readUpdates(machine, kDpkg, enough));
    if (!add(readDnfHistory(machine, enough))) {
        add(readUpdates(machine, kDnf, enough));
        add(readUpdates(machine, kYum, enough));
    }
    add(readUpdates(machine, kZypp, enough));
    return updates;
}
