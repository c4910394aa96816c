#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/sqlite_file.h"
#include "scanners/zukhw/login_history.h"
#include "scanners/zukhw/machine.h"

namespace {

constexpr std::int64_t kBoot = 1;
constexpr std::int64_t kUser = 3;

// The newest first.
constexpr char kQuery[] =
    "SELECT Type, User, Login, Logout, TTY, RemoteHost, Service FROM wtmp ORDER BY ID DESC";

std::optional<std::int64_t> seconds(const SqliteRow& row, int column) {
    constexpr std::int64_t kMicroseconds = 1000000;
    const auto time = row.number(column);
    return time && *time > 0 ? std::optional(*time / kMicroseconds) : std::nullopt;
}

Login loginOf(const SqliteRow& row, std::optional<std::int64_t> systemEnd) {
    Login login;
    login.record.user = row.bytes(1);
    login.record.time = seconds(row, 2).value_or(0);
    login.record.line = row.bytes(4);
    login.record.host = row.bytes(5);
    login.service = row.bytes(6);
    login.ended = seconds(row, 3);
    if (!login.ended) login.ended = systemEnd;
    login.open = !login.ended;
    login.source = kLoginDatabase;
    return login;
}

}  // namespace

std::vector<Login> readDatabaseLogins(Machine& machine) {
    constexpr std::size_t kMaxRows = 10000;
    std::vector<Login> logins;
    const FileDescriptor file = machine.open(kLoginDatabase);
    if (!file.valid()) return logins;
    std::optional<std::int64_t> systemEnd;  // the start after a login, where nothing else tells of its end
    std::size_t rows = 0;
    const std::string problem = readSqlite(descriptorPath(file), kQuery, [&](const SqliteRow& row) {
        machine.deadline().check();
        const auto type = row.number(0);
        if (type == kBoot) systemEnd = seconds(row, 2);
        if (type == kUser && !row.bytes(1).empty()) logins.push_back(loginOf(row, systemEnd));
        return ++rows < kMaxRows && logins.size() < kMaxLogins;
    });
    if (!problem.empty()) machine.sources().malformed(kLoginDatabase, 0);
    return logins;
}
