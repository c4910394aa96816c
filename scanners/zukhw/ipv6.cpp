#include "scanners/zukhw/ipv6.h"

#include <arpa/inet.h>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kRoutePath[] = "proc/net/ipv6_route";

}  // namespace

std::string ipv6Text(const Ipv6Bytes& address) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    if (::inet_ntop(AF_INET6, address.data(), text.data(), text.size()) == nullptr) return "";
    return text.data();
}

std::optional<Ipv6Bytes> parseIpv6Hex(std::string_view hex) {
    Ipv6Bytes address{};
    if (hex.size() != 2 * address.size()) return std::nullopt;
    for (std::size_t i = 0; i < address.size(); ++i) {
        constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
        const std::string_view digits = hex.substr(2 * i, 2);
        if (digits.find_first_not_of(kDigits) != std::string_view::npos) return std::nullopt;
        address[i] = static_cast<unsigned char>(parseHex(digits).value_or(0));
    }
    return address;
}

// Destination and its length, source and its length, next hop, metric, two counters, flags, interface.
Ipv6Gateways::Ipv6Gateways(Machine& machine) {
    constexpr std::size_t kFields = 10;
    constexpr std::uint64_t kUpGateway = 3;
    const std::string text = machine.read(kRoutePath, Machine::kTable).value_or("");
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> fields = words(line);
        const auto hop = fields.size() == kFields ? parseIpv6Hex(fields[4]) : std::nullopt;
        const auto metric = hop ? parseHex(fields[5]) : std::nullopt;
        const auto flags = hop ? parseHex(fields[8]) : std::nullopt;
        if (!hop || !metric || !flags) {
            machine.sources().malformed(kRoutePath, static_cast<std::size_t>(line.data() - text.data()));
            continue;
        }
        if (fields[1] != "00" || (*flags & kUpGateway) != kUpGateway) continue;
        gateways_.push_back({std::string(fields[9]), *metric, *hop});
    }
}

std::vector<std::string> Ipv6Gateways::of(std::string_view interface) const {
    std::vector<std::string> found;
    std::uint64_t lowest = UINT64_MAX;
    for (const Gateway& gateway : gateways_) {
        if (gateway.interface != interface || gateway.metric > lowest) continue;
        if (gateway.metric < lowest) found.clear();
        lowest = gateway.metric;
        found.push_back(ipv6Text(gateway.address));
    }
    return found;
}
