#include "scanners/zukhw/last_logins.h"

#include <array>

#include "scanners/shared/bytes.h"
#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/machine.h"

namespace {

constexpr char kPath[] = "var/log/lastlog";

// The time, 32 bytes for the terminal and 256 for the host. Few architectures use 64 bits for the time.
constexpr unsigned kShortRecord = 292;
constexpr unsigned kLongRecord = 296;

}  // namespace

LastLogins::LastLogins(Machine& machine) : file_(machine.files().openRegular(kPath)) {
    const auto facts = machine.facts(kPath);
    if (!facts) return;
    const bool isLong = facts->size % kShortRecord != 0 && facts->size % kLongRecord == 0;
    recordSize_ = isLong ? kLongRecord : kShortRecord;
    timeSize_ = isLong ? 8 : 4;
    bigEndian_ = machine.shared<Architecture>().bigEndian();
}

std::optional<std::int64_t> LastLogins::of(std::uint32_t userId) {
    std::array<char, 8> time{};
    if (!file_.isOpen() || recordSize_ == 0) return std::nullopt;
    if (!file_.read(std::uint64_t{userId} * recordSize_, time.data(), timeSize_)) return std::nullopt;
    const Bytes bytes({time.data(), time.size()}, bigEndian_ ? Bytes::Order::Big : Bytes::Order::Little);
    const std::uint64_t seconds = bytes.numberOr0(0, timeSize_);
    if (seconds == 0 || seconds > INT64_MAX) return std::nullopt;
    return static_cast<std::int64_t>(seconds);
}
