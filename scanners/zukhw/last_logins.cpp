#include "scanners/zukhw/last_logins.h"

#include <algorithm>
#include <array>

#include "scanners/shared/bytes.h"
#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/sqlite_file.h"
#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/machine.h"

namespace {

constexpr char kPath[] = "var/log/lastlog";
constexpr char kDatabase[] = "var/lib/lastlog/lastlog2.db";

// The time, 32 bytes for the terminal and 256 for the host. Few architectures use 64 bits for the time.
constexpr unsigned kShortRecord = 292;
constexpr unsigned kLongRecord = 296;

}  // namespace

LastLogins::LastLogins(Machine& machine) : file_(machine.open(kPath)) {
    readDatabase(machine);
    const auto facts = machine.facts(kPath);
    if (!facts) return;
    const bool isLong = facts->size % kShortRecord != 0 && facts->size % kLongRecord == 0;
    recordSize_ = isLong ? kLongRecord : kShortRecord;
    timeSize_ = isLong ? 8 : 4;
    bigEndian_ = machine.shared<Architecture>().bigEndian();
}

void LastLogins::readDatabase(Machine& machine) {
    constexpr std::size_t kMaxUsers = 100000;
    const FileDescriptor file = machine.open(kDatabase);
    if (!file.valid()) return;
    const auto take = [&](const SqliteRow& row) {
        machine.deadline().check();
        if (const auto time = row.number(1); time && *time > 0) inDatabase_.emplace(row.bytes(0), *time);
        return inDatabase_.size() < kMaxUsers;
    };
    const std::string problem = readSqlite(descriptorPath(file), "SELECT Name, Time FROM Lastlog2", take);
    if (!problem.empty()) machine.sources().malformed(kDatabase, 0);
}

// Of two the newer one: where the database came later, the file was left as it was.
std::optional<std::int64_t> LastLogins::of(std::uint32_t userId, std::string_view name) {
    const auto known = inDatabase_.find(name);
    const auto old = inFile(userId);
    if (known == inDatabase_.end()) return old;
    return old ? std::max(*old, known->second) : known->second;
}

std::optional<std::int64_t> LastLogins::inFile(std::uint32_t userId) {
    std::array<char, 8> time{};
    if (!file_.isOpen() || recordSize_ == 0) return std::nullopt;
    if (!file_.read(std::uint64_t{userId} * recordSize_, time.data(), timeSize_)) return std::nullopt;
    const Bytes bytes({time.data(), time.size()}, bigEndian_ ? Bytes::Order::Big : Bytes::Order::Little);
    const std::uint64_t seconds = bytes.numberOr0(0, timeSize_);
    if (seconds == 0 || seconds > INT64_MAX) return std::nullopt;
    return static_cast<std::int64_t>(seconds);
}
