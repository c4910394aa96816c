// Group "LastLoggedUser": one instance, the newest login of a person.
#include <arpa/inet.h>

#include <array>
#include <cstdint>
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

const char* sessionKind(const Login& whole) {
    const LoginRecord& login = whole.record;
    if (whole.display == "x11" || whole.display == "wayland") return "Graphical";
    if (startsWith(whole.service, "ssh")) return "Ssh";
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

// The host itself when it is one.
std::string addressOf(const LoginRecord& record) {
    std::array<unsigned char, sizeof(in6_addr)> bytes{};
    const auto isAddress = [&](int family) {
        return ::inet_pton(family, record.host.c_str(), bytes.data()) == 1;
    };
    return record.address.empty() && (isAddress(AF_INET) || isAddress(AF_INET6)) ? record.host
                                                                                 : record.address;
}

void writeLogin(Machine& machine, const Login& login, GroupWriter& out) {
    const LoginRecord& record = login.record;
    const Account* account = machine.shared<Accounts>().find(record.user);
    out.text("UserName", record.user);
    if (account != nullptr) out.number("UserId", account->userId);
    out.text("LoginTime", utcTime(record.time));
    if (login.ended) out.text("LogoutTime", utcTime(*login.ended));
    out.text("Terminal", record.line);
    if (!isDisplay(record.host)) out.text("RemoteHost", record.host);
    out.text("RemoteAddress", addressOf(record));
    out.boolean("StillLoggedIn", isOpen(machine, login));
    out.text("SessionKind", sessionKind(login));
    out.text("Source", '/' + login.source);
}

// When the newest of them began; 0 without any.
std::int64_t timeOf(const std::vector<Login>& logins) {
    return logins.empty() ? 0 : logins.front().record.time;
}

}  // namespace

void collectLastLoggedUser(Machine& machine, GroupWriter& out) {
    constexpr std::int64_t kSameLogin = 5;  // seconds between the two records of one
    std::vector<Login> logins = readLogins(machine);
    std::vector<Login> others = readDatabaseLogins(machine);
    if (timeOf(others) > timeOf(logins)) logins.swap(others);
    const std::optional<Login> session = readNewestSession(machine);
    const bool sessionIsNewer = session && session->record.time > timeOf(logins) + kSameLogin;
    if (!sessionIsNewer && logins.empty()) return;
    out.beginInstance();
    writeLogin(machine, sessionIsNewer ? *session : logins.front(), out);
    out.text("PrimaryUser", mostFrequent(logins));
}
