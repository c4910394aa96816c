#include "scanners/zukhw/wtmp.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>

#include "scanners/shared/bytes.h"

namespace {

constexpr LoginRecordLayout kLayouts[] = {
    {384, false, false}, {384, false, true}, {400, true, false}, {400, true, true}};

constexpr std::uint64_t kProcessId = 4;
constexpr std::uint64_t kLine = 8;
constexpr std::uint64_t kUser = 44;
constexpr std::uint64_t kHost = 76;
constexpr std::uint64_t kShortTime = 340;
constexpr std::uint64_t kWideTime = 344;
constexpr std::uint64_t kShortAddress = 348;
constexpr std::uint64_t kWideAddress = 360;
constexpr std::size_t kAddressSize = 16;

Bytes::Order orderOf(const LoginRecordLayout& layout) {
    return layout.bigEndian ? Bytes::Order::Big : Bytes::Order::Little;
}

// A type that exists, and two bytes after it that nothing is kept in.
bool makesSense(const Bytes& record) {
    const std::uint64_t type = record.numberOr0(0, 2);
    return type >= LoginRecord::kRunLevel && type <= LoginRecord::kAccounting && record.numberOr0(2, 2) == 0;
}

// A field of fixed width, filled up with NULs where the text is shorter.
std::string fieldOf(const Bytes& record, std::uint64_t offset, std::size_t width) {
    const std::string_view field = record.piece(offset, width).value_or("");
    return std::string(field.substr(0, field.find('\0')));
}

// IPv4 when only the first of the four words is in use.
std::string addressOf(const Bytes& record, std::uint64_t offset) {
    const std::string_view bytes = record.piece(offset, kAddressSize).value_or("");
    const auto isZero = [](char c) { return c == '\0'; };
    if (std::all_of(bytes.begin(), bytes.end(), isZero)) return "";
    const int family = std::all_of(bytes.begin() + 4, bytes.end(), isZero) ? AF_INET : AF_INET6;
    std::array<char, INET6_ADDRSTRLEN> text{};
    if (::inet_ntop(family, bytes.data(), text.data(), text.size()) == nullptr) return "";
    return text.data();
}

LoginRecord parseRecord(const Bytes& record, bool wideTimes) {
    constexpr std::size_t kNameWidth = 32;
    constexpr std::size_t kHostWidth = 256;
    LoginRecord login;
    login.type = makesSense(record) ? static_cast<int>(record.numberOr0(0, 2)) : LoginRecord::kEmpty;
    login.processId = static_cast<std::int32_t>(record.numberOr0(kProcessId, 4));
    login.line = fieldOf(record, kLine, kNameWidth);
    login.user = fieldOf(record, kUser, kNameWidth);
    login.host = fieldOf(record, kHost, kHostWidth);
    login.address = addressOf(record, wideTimes ? kWideAddress : kShortAddress);
    // 32 bits are taken as unsigned: that is how they last beyond 2038.
    login.time = static_cast<std::int64_t>(wideTimes ? record.numberOr0(kWideTime, 8)
                                                     : record.numberOr0(kShortTime, 4));
    return login;
}

}  // namespace

LoginRecordLayout findLoginRecordLayout(std::string_view head) {
    constexpr std::size_t kEnough = 64;
    LoginRecordLayout best;
    std::size_t bestCount = 0;
    for (const LoginRecordLayout& layout : kLayouts) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < kEnough && (i + 1) * layout.size <= head.size(); ++i) {
            if (makesSense(Bytes(head.substr(i * layout.size, layout.size), orderOf(layout)))) ++count;
        }
        if (count > bestCount) {
            best = layout;
            bestCount = count;
        }
    }
    return best;
}

std::vector<LoginRecord> parseLoginRecords(std::string_view bytes, const LoginRecordLayout& layout) {
    std::vector<LoginRecord> records;
    for (; bytes.size() >= layout.size; bytes.remove_prefix(layout.size)) {
        records.push_back(
            parseRecord(Bytes(bytes.substr(0, layout.size), orderOf(layout)), layout.wideTimes));
    }
    return records;
}
