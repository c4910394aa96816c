#include "scanners/zukhw/ipv4.h"

#include <algorithm>
#include <optional>

#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kRoutePath[] = "proc/net/route";

std::optional<std::uint32_t> parseAddress(std::string_view hex, bool bigEndian) {
    const auto number = parseHex(hex);
    if (!number || *number > UINT32_MAX) return std::nullopt;
    const auto address = static_cast<std::uint32_t>(*number);
    return bigEndian ? address : __builtin_bswap32(address);
}

std::optional<std::uint32_t> parseDotted(std::string_view text) {
    const std::vector<std::string_view> parts = split(text, '.');
    if (parts.size() != 4) return std::nullopt;
    std::uint32_t address = 0;
    for (const std::string_view part : parts) {
        const auto byte = parseDecimal(part);
        if (!byte || *byte > 255) return std::nullopt;
        address = address << 8 | static_cast<std::uint32_t>(*byte);
    }
    return address;
}

// "eth0 0001A8C0 00000000 0001 0 0 100 00FFFFFF 0 0 0"
std::optional<Ipv4Route> parseRoute(std::string_view line, bool bigEndian) {
    constexpr std::uint64_t kUp = 1;
    constexpr std::uint64_t kGateway = 2;
    const std::vector<std::string_view> fields = words(line);
    if (fields.size() < 8) return std::nullopt;
    const auto destination = parseAddress(fields[1], bigEndian);
    const auto gateway = parseAddress(fields[2], bigEndian);
    const auto flags = parseHex(fields[3]);
    const auto metric = parseDecimal(fields[6]);
    const auto mask = parseAddress(fields[7], bigEndian);
    if (!destination || !gateway || !flags || !metric || !mask) return std::nullopt;
    return Ipv4Route{std::string(fields[0]),  *destination, *gateway, *mask, *metric, (*flags & kUp) != 0,
                     (*flags & kGateway) != 0};
}

}  // namespace

std::string ipv4Text(std::uint32_t address) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        if (!text.empty()) text += '.';
        text += std::to_string(address >> shift & 0xFFU);
    }
    return text;
}

std::uint32_t ipv4Mask(unsigned length) {
    return length == 0 ? 0 : UINT32_MAX << (32 - length);
}

Ipv4Routes::Ipv4Routes(Machine& machine) {
    const std::string text = machine.read(kRoutePath, Machine::kTable).value_or("");
    // The kernel prints addresses as numbers of its own byte order: whose machine it is decides how to read
    // them.
    const bool bigEndian = machine.shared<Architecture>().bigEndian();
    for (const std::string_view line : lines(text)) {
        if (startsWith(line, "Iface")) continue;
        if (auto route = parseRoute(line, bigEndian)) {
            routes_.push_back(std::move(*route));
        } else {
            machine.sources().malformed(kRoutePath, static_cast<std::size_t>(line.data() - text.data()));
        }
    }
}

std::vector<std::string> Ipv4Routes::gatewaysOf(std::string_view interface) const {
    std::vector<std::string> gateways;
    std::uint64_t lowest = UINT64_MAX;
    for (const Ipv4Route& route : routes_) {
        const bool isDefault = route.destination == 0 && route.mask == 0 && route.isUp && route.hasGateway;
        if (!isDefault || route.interface != interface || route.metric > lowest) continue;
        if (route.metric < lowest) gateways.clear();
        lowest = route.metric;
        gateways.push_back(ipv4Text(route.gateway));
    }
    return gateways;
}

// A tree in which the line with an address, "|-- 192.168.0.2", comes before those that say what it is: "/32
// host LOCAL". Some kernels print one table for main and local, then the same again: each address is taken
// once.
std::vector<LocalAddress> parseFibTrie(std::string_view text) {
    std::vector<LocalAddress> found;
    std::optional<std::uint32_t> current;
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() == 2 && fields[0] == "|--") current = parseDotted(fields[1]);
        if (fields.size() < 3 || fields[1] != "host" || fields[2] != "LOCAL" || !current) continue;
        const auto length = startsWith(fields[0], "/") ? parseDecimal(fields[0].substr(1)) : std::nullopt;
        if (!length || *length > 32) continue;
        const auto isSame = [&](const LocalAddress& known) { return known.address == *current; };
        if (std::any_of(found.begin(), found.end(), isSame)) continue;
        found.push_back({*current, static_cast<unsigned>(*length)});
    }
    return found;
}
