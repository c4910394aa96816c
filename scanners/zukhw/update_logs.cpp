#include "scanners/zukhw/update_logs.h"

#include <algorithm>
#include <map>

#include "scanners/shared/packages/deb822.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::size_t kDateLength = 10;

// "2026-05-20" at the beginning of a text, or empty.
std::string dateAt(std::string_view text) {
    constexpr std::string_view kForm = "dddd-dd-dd";
    if (text.size() < kForm.size()) return "";
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (kForm[i] == 'd' ? !digit : text[i] != kForm[i]) return "";
    }
    return std::string(text.substr(0, kDateLength));
}

// "libc6:amd64" into its parts.
void setPackage(std::string_view written, PackageUpdate* update) {
    const std::size_t colon = written.find(':');
    update->name = written.substr(0, colon);
    if (colon != std::string_view::npos) update->architecture = written.substr(colon + 1);
}

// "libc6:amd64 (2.36-9, 2.36-10), zlib1g:amd64 (1, 2)"
void takeUpgrades(std::string_view list, const PackageUpdate& common, std::vector<PackageUpdate>* updates) {
    while (!list.empty()) {
        const std::size_t open = list.find('(');
        const std::size_t close = list.find(')', open);
        if (close == std::string_view::npos) return;
        const std::vector<std::string_view> versions = split(list.substr(open + 1, close - open - 1), ',');
        const std::string_view package = trim(list.substr(0, open));
        list.remove_prefix(close + 1);
        list.remove_prefix(std::min(list.find_first_not_of(", "), list.size()));
        if (versions.size() < 2 || package.empty()) continue;
        PackageUpdate update = common;
        setPackage(package, &update);
        update.fromVersion = trim(versions[0]);
        update.toVersion = trim(versions[1]);
        if (!update.name.empty()) updates->push_back(std::move(update));
    }
}

// "bash-5.1.8-2.fc34.x86_64", with an epoch before the version where there is one.
bool setRpmPackage(std::string_view written, PackageUpdate* update, std::string* version) {
    const std::size_t dot = written.rfind('.');
    if (dot == std::string_view::npos) return false;
    const std::string_view rest = written.substr(0, dot);
    const std::size_t release = rest.rfind('-');
    if (release == std::string_view::npos || release == 0) return false;
    const std::size_t name = rest.rfind('-', release - 1);
    if (name == std::string_view::npos || name == 0) return false;
    update->architecture = written.substr(dot + 1);
    update->name = rest.substr(0, name);
    *version = rest.substr(name + 1);
    return true;
}

}  // namespace

std::vector<PackageUpdate> parseAptHistory(std::string_view text) {
    using Item = Deb822Reader::Item;
    std::vector<PackageUpdate> updates;
    PackageUpdate common;
    std::string_view upgrades;
    Deb822Reader reader(text);
    for (Item item = reader.next(); item != Item::End; item = reader.next()) {
        if (item == Item::Field) {
            const std::string_view value = reader.value();
            if (reader.name() == "Start-Date") common.date = dateAt(value);
            if (reader.name() == "Requested-By") common.requester = value.substr(0, value.find(' '));
            if (reader.name() == "Upgrade") upgrades = value;
        }
        if (item != Item::EndOfParagraph) continue;
        takeUpgrades(upgrades, common, &updates);
        common = PackageUpdate();
        upgrades = {};
    }
    return updates;
}

// "2026-05-20 10:11:12 upgrade libc6:amd64 2.36-9 2.36-10"
std::vector<PackageUpdate> parseDpkgLog(std::string_view text) {
    std::vector<PackageUpdate> updates;
    for (const std::string_view line : lines(text)) {
        if (line.find(" upgrade ") == std::string_view::npos) continue;
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() != 6 || fields[2] != "upgrade") continue;
        PackageUpdate update;
        update.date = dateAt(line);
        setPackage(fields[3], &update);
        update.fromVersion = fields[4];
        update.toVersion = fields[5];
        if (!update.name.empty()) updates.push_back(std::move(update));
    }
    return updates;
}

// "2026-05-20T10:11:12+0000 SUBDEBUG Upgrade: bash-5.1.8-2.fc34.x86_64"; what was before follows as
// "Upgraded:".
std::vector<PackageUpdate> parseDnfLog(std::string_view text) {
    std::vector<PackageUpdate> updates;
    std::map<std::string, std::size_t> newest;  // by name and architecture
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() != 4 || (fields[2] != "Upgrade:" && fields[2] != "Upgraded:")) continue;
        PackageUpdate update;
        std::string version;
        if (!setRpmPackage(fields[3], &update, &version)) continue;
        const std::string key = update.name + '.' + update.architecture;
        if (fields[2] == "Upgraded:") {
            const auto found = newest.find(key);
            if (found != newest.end()) updates[found->second].fromVersion = version;
            continue;
        }
        update.date = dateAt(line);
        update.toVersion = version;
        newest[key] = updates.size();
        updates.push_back(std::move(update));
    }
    return updates;
}

// "May 20 10:11:12 Updated: 32:bind-libs-9.9.4-72.el7.x86_64": without a year there is no date.
std::vector<PackageUpdate> parseYumLog(std::string_view text) {
    std::vector<PackageUpdate> updates;
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() != 5 || fields[3] != "Updated:") continue;
        const std::size_t colon = fields[4].find(':');
        const bool hasEpoch = colon != std::string_view::npos;
        PackageUpdate update;
        std::string version;
        if (!setRpmPackage(hasEpoch ? fields[4].substr(colon + 1) : fields[4], &update, &version)) continue;
        if (hasEpoch) version.insert(0, fields[4].substr(0, colon + 1));
        update.toVersion = version;
        updates.push_back(std::move(update));
    }
    return updates;
}

// "2026-05-20 10:11:12|install|bash|5.1-2.1|x86_64|ada@host|repository|checksum|": an installation of a
// package whose installation, or removal, was not the last that it told of the package is an update.
std::vector<PackageUpdate> parseZyppHistory(std::string_view text) {
    std::vector<PackageUpdate> updates;
    std::map<std::string, std::string> installed;  // version by name and architecture
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> fields = split(line, '|');
        if (startsWith(line, "#") || fields.size() < 6) continue;
        const std::string_view action = trim(fields[1]);
        const std::string key = std::string(fields[2]) + '.' + std::string(fields[4]);
        if (action == "remove") installed.erase(key);
        if (action != "install" || fields[2].empty()) continue;
        std::string& version = installed[key];
        if (!version.empty() && version != fields[3]) {
            const std::string_view requester = fields[5].substr(0, fields[5].find('@'));
            updates.push_back({std::string(fields[2]), std::string(fields[4]), version,
                               std::string(fields[3]), dateAt(line), std::string(requester)});
        }
        version = fields[3];
    }
    return updates;
}
