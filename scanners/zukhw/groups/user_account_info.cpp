// Group "UserAccountInfo": one instance per user of /etc/passwd, by number.
#include <algorithm>
#include <string>
#include <vector>

#include "scanners/zukhw/accounts.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/last_logins.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/shadow.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::uint32_t kNobody = 65534;

// The lowest number of a person's account.
std::uint64_t lowestUserId(Machine& machine) {
    constexpr std::uint64_t kUsual = 1000;
    constexpr std::string_view kSetting = "UID_MIN";
    const std::string text = machine.text("etc/login.defs");
    for (const std::string_view line : lines(text)) {
        if (line.find(kSetting) == std::string_view::npos) continue;  // most are comments, in many words
        const std::vector<std::string_view> parts = words(line);
        if (parts.size() >= 2 && parts[0] == kSetting) return parseDecimal(parts[1]).value_or(kUsual);
    }
    return kUsual;
}

bool allowsLogin(std::string_view shell) {
    const std::string_view program = baseName(shell);
    return program != "nologin" && program != "false";
}

bool isPrivileged(const Account& user, const std::vector<std::string>& groups, const std::string& mainGroup) {
    static constexpr std::string_view kAdministrators[] = {"sudo", "wheel", "admin"};
    return user.userId == 0 ||
           std::any_of(std::begin(kAdministrators), std::end(kAdministrators), [&](std::string_view name) {
               return mainGroup == name || std::find(groups.begin(), groups.end(), name) != groups.end();
           });
}

// The date of a number of days; 0 means that there is none.
std::string dateOf(std::optional<std::int64_t> days) {
    constexpr std::int64_t kDay = 24 * 60 * 60;
    constexpr std::int64_t kLast = 4000000;  // beyond the year 9999
    if (!days || *days <= 0 || *days > kLast) return "";
    return utcDate(*days * kDay);
}

void writePassword(Machine& machine, const Account& user, GroupWriter& out) {
    if (user.password != "x") {
        out.text("PasswordState", passwordStateName(passwordState(user.password)));
        return;
    }
    const Shadow::Entry* entry = machine.shared<Shadow>().find(user.name);
    if (entry == nullptr) return;
    out.text("PasswordState", passwordStateName(entry->password));
    out.text("PasswordChanged", dateOf(entry->changed));
    out.text("AccountExpires", dateOf(entry->expires));
    if (entry->maxDays && *entry->maxDays >= 0) out.number("PasswordMaxDays", *entry->maxDays);
}

void writeUser(Machine& machine, const Account& user, std::uint64_t lowest, GroupWriter& out) {
    const Accounts& accounts = machine.shared<Accounts>();
    const std::string mainGroup = accounts.groupName(user.groupId);
    const std::vector<std::string> groups = accounts.groupsOf(user.name);
    out.beginInstance();
    out.text("Name", user.name);
    out.number("UserId", user.userId);
    out.number("GroupId", user.groupId);
    out.text("GroupName", mainGroup);
    out.text("FullName", std::string_view(user.comment).substr(0, user.comment.find(',')));
    out.text("Home", user.home);
    out.text("Shell", user.shell);
    out.boolean("System", user.userId < lowest || user.userId == kNobody);
    out.boolean("LoginAllowed", allowsLogin(user.shell));
    out.list("Groups", groups);
    writePassword(machine, user, out);
    const auto lastLogin = machine.shared<LastLogins>().of(user.userId, user.name);
    if (lastLogin) out.text("LastLogin", utcTime(*lastLogin));
    out.boolean("Privileged", isPrivileged(user, groups, mainGroup));
}

}  // namespace

void collectUserAccountInfo(Machine& machine, GroupWriter& out) {
    std::vector<const Account*> users;
    for (const Account& user : machine.shared<Accounts>().users()) users.push_back(&user);
    std::stable_sort(users.begin(), users.end(),
                     [](const Account* a, const Account* b) { return a->userId < b->userId; });
    const std::uint64_t lowest = lowestUserId(machine);
    for (const Account* user : users) writeUser(machine, *user, lowest, out);
}
