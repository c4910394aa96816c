#include "scanners/zukhw/accounts.h"

#include <algorithm>
#include <optional>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kPasswd[] = "etc/passwd";
constexpr char kGroup[] = "etc/group";

std::optional<std::uint32_t> parseId(std::string_view text) {
    const auto id = parseDecimal(text);
    if (!id || *id > UINT32_MAX) return std::nullopt;
    return static_cast<std::uint32_t>(*id);
}

// Lines that begin so ask for what a directory service adds.
bool isDirective(std::string_view line) {
    return startsWith(line, "+") || startsWith(line, "-");
}

// Hands over the fields of each line; false from it means that they make no sense.
template <typename Take>
void forEachLine(Machine& machine, const char* path, Take take) {
    const std::string text = machine.read(path, Machine::kTable).value_or("");
    for (const std::string_view line : lines(text)) {
        if (trim(line).empty() || isDirective(line)) continue;
        if (take(split(line, ':'))) continue;
        machine.sources().malformed(path, static_cast<std::size_t>(line.data() - text.data()));
    }
}

}  // namespace

Accounts::Accounts(Machine& machine) {
    readUsers(machine);
    readGroups(machine);
}

// "name:password:uid:gid:comment:home:shell"
void Accounts::readUsers(Machine& machine) {
    constexpr std::size_t kFields = 7;
    forEachLine(machine, kPasswd, [this](const std::vector<std::string_view>& fields) {
        if (fields.size() < kFields || fields[0].empty()) return false;
        const auto userId = parseId(fields[2]);
        const auto groupId = parseId(fields[3]);
        if (!userId || !groupId) return false;
        users_.push_back({std::string(fields[0]), std::string(fields[1]), *userId, *groupId,
                          std::string(fields[4]), std::string(fields[5]), std::string(fields[6])});
        return true;
    });
}

// "name:password:gid:member,member"
void Accounts::readGroups(Machine& machine) {
    constexpr std::size_t kFields = 4;
    forEachLine(machine, kGroup, [this](const std::vector<std::string_view>& fields) {
        const auto id = fields.size() < kFields ? std::nullopt : parseId(fields[2]);
        if (!id || fields[0].empty()) return false;
        Group group{std::string(fields[0]), *id, {}};
        for (const std::string_view member : split(fields[3], ',')) group.members.emplace_back(trim(member));
        groups_.push_back(std::move(group));
        return true;
    });
}

const Account* Accounts::find(std::string_view name) const {
    const auto isNamed = [&](const Account& user) { return user.name == name; };
    const auto found = std::find_if(users_.begin(), users_.end(), isNamed);
    return found == users_.end() ? nullptr : &*found;
}

std::string Accounts::groupName(std::uint32_t groupId) const {
    const auto hasId = [&](const Group& group) { return group.id == groupId; };
    const auto found = std::find_if(groups_.begin(), groups_.end(), hasId);
    return found == groups_.end() ? "" : found->name;
}

std::vector<std::string> Accounts::groupsOf(std::string_view user) const {
    std::vector<std::string> names;
    for (const Group& group : groups_) {
        const auto& members = group.members;
        if (std::find(members.begin(), members.end(), user) != members.end()) names.push_back(group.name);
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}
