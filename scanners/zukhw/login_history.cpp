#include "scanners/zukhw/login_history.h"

#include <unistd.h>

#include <algorithm>
#include <map>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/os_release.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::uint64_t kMaxTail = std::uint64_t{1024} * 1024;  // more than two thousand records

std::string readAt(int fd, std::uint64_t offset, std::uint64_t size) {
    std::string bytes(size, '\0');
    const ssize_t count = ::pread(fd, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return bytes;
}

// The system's start and its shutdown end every session.
bool isSystemRecord(const LoginRecord& record) {
    if (record.type == LoginRecord::kBootTime) return true;
    return record.type == LoginRecord::kRunLevel && record.user == "shutdown";
}

}  // namespace

std::vector<Login> findLogins(const std::vector<LoginRecord>& records) {
    std::vector<Login> logins;
    std::map<std::string, std::int64_t> ends;  // by terminal, of what follows in the file
    std::optional<std::int64_t> systemEnd;
    for (auto record = records.rbegin(); record != records.rend() && logins.size() < kMaxLogins; ++record) {
        if (isSystemRecord(*record)) {
            systemEnd = record->time;
            ends.clear();
        } else if (record->type == LoginRecord::kDead) {
            ends[record->line] = record->time;
        } else if (record->type == LoginRecord::kUser && !trim(record->user).empty()) {
            Login login;
            login.record = *record;
            login.ended = systemEnd;
            login.open = !systemEnd;
            login.source = kLoginFile;
            const auto end = ends.find(record->line);
            if (end != ends.end()) {
                login.ended = end->second;
                login.open = false;
            }
            ends[record->line] = record->time;  // a login before it on the same terminal has ended by now
            logins.push_back(std::move(login));
        }
    }
    return logins;
}

std::vector<Login> readLogins(Machine& machine) {
    constexpr std::uint64_t kHead = 64 * 400;
    const FileDescriptor file = machine.open(kLoginFile);
    const auto facts = machine.facts(kLoginFile);
    if (!file.valid() || !facts) return {};
    const LoginRecordLayout layout =
        findLoginRecordLayout(readAt(file.get(), 0, std::min(facts->size, kHead)));
    const std::uint64_t whole = facts->size / layout.size * layout.size;
    const std::uint64_t tail = std::min(whole, kMaxTail / layout.size * layout.size);
    if (whole != facts->size) machine.sources().malformed(kLoginFile, whole);
    return findLogins(parseLoginRecords(readAt(file.get(), whole - tail, tail), layout));
}

// Files of assignments, one a session; they go when it ends.
std::optional<Login> readNewestSession(Machine& machine) {
    constexpr std::int64_t kMicroseconds = 1000000;
    std::optional<Login> newest;
    for (const std::string& name : machine.list(kOpenSessions)) {
        const std::string text = machine.read(std::string(kOpenSessions) + '/' + name).value_or("");
        const auto values = parseOsRelease(text);
        const auto valueOf = [&](const char* key) {
            const auto found = values.find(key);
            return found == values.end() ? std::string() : found->second;
        };
        const auto started = parseSigned(valueOf("REALTIME"));
        if (!started || *started <= 0 || valueOf("CLASS") != "user" || valueOf("USER").empty()) continue;
        const std::int64_t time = *started / kMicroseconds;
        if (newest && newest->record.time >= time) continue;
        newest = Login{};
        newest->open = true;
        newest->record.time = time;
        newest->record.user = valueOf("USER");
        newest->record.line = valueOf("TTY").empty() ? valueOf("DISPLAY") : valueOf("TTY");
        newest->record.host = valueOf("REMOTE_HOST");
        newest->service = valueOf("SERVICE");
        newest->display = valueOf("TYPE");
        newest->source = kOpenSessions;
    }
    return newest;
}
