// Group "LastLoggedUser": one instance, the newest login of a person.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "scanners/zukhw/accounts.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/login_history.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

bool isDisplay(std::string_view host) {
    return startsWith(host, ":");
}

const char* sessionKind(const LoginRecord& login) {
    if (isDisplay(login.host) || startsWith(login.line, ":")) return "Graphical";
    if (startsWith(login.line, "pts/") || startsWith(login.line, "ssh"))
        return login.host.empty() && login.address.empty() ? "Other" : "Ssh";
    const bool console =
        startsWith(login.line, "tty") || startsWith(login.line, "console") || startsWith(login.line, "hvc");
    return console ? "Console" : "Other";
}

// The user with the most of these logins; of equals the one who came last.
std::string mostFrequent(const std::vector<Login>& logins) {
    std::map<std::string, std::size_t> counts;
    for (const Login& login : logins) ++counts[login.record.user];
    std::string best;
    for (const Login& login : logins) {
        if (best.empty() || counts[login.record.user] > counts[best]) best = login.record.user;
    }
    return best;
}

// A session that was not ended in the file may have gone with its process.
bool isOpen(Machine& machine, const Login& login) {
    if (!login.open || !machine.live() || login.record.processId <= 0) return login.open;
    return machine.exists("proc/" + std::to_string(login.record.processId));
}

void writeLogin(Machine& machine, const Login& login, const char* source, GroupWriter& out) {
    const LoginRecord& record = login.record;
    const Account* account = machine.shared<Accounts>().find(record.user);
    out.text("UserName", record.user);
    if (account != nullptr) out.number("UserId", account->userId);
    out.text("LoginTime", utcTime(record.time));
    if (login.ended) out.text("LogoutTime", utcTime(*login.ended));
    out.text("Terminal", record.line);
    if (!isDisplay(record.host)) out.text("RemoteHost", record.host);
    out.text("RemoteAddress", record.address);
    out.boolean("StillLoggedIn", isOpen(machine, login));
    out.text("SessionKind", sessionKind(record));
    out.text("Source", source);
}

}  // namespace

void collectLastLoggedUser(Machine& machine, GroupWriter& out) {
    constexpr std::int64_t kSameLogin = 5;  // seconds between the two records of one
    const std::vector<Login> logins = readLogins(machine);
    const std::optional<Login> session = readNewestSession(machine);
    const bool sessionIsNewer =
        session && (logins.empty() || session->record.time > logins.front().record.time + kSameLogin);
    if (!sessionIsNewer && logins.empty()) return;
    out.beginInstance();
    if (sessionIsNewer) {
        writeLogin(machine, *session, "/run/systemd/sessions", out);
    } else {
        writeLogin(machine, logins.front(), "/var/log/wtmp", out);
    }
    out.text("PrimaryUser", mostFrequent(logins));
}
