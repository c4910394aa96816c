// Group "IPv6Address": one instance per IPv6 address, by the interface's index, then by the address.
#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/ipv6.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/net_interfaces.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kPath[] = "proc/net/if_inet6";

struct Address {
    std::uint64_t interfaceIndex = 0;
    Ipv6Bytes bytes{};
    std::string interface;
    std::uint64_t prefixLength = 0, scope = 0, flags = 0;
};

// "fe8000000000000000fc00fffe000001 04 40 20 80     eth0": address, index, prefix length, scope, flags.
std::optional<Address> parseAddress(std::string_view line) {
    const std::vector<std::string_view> fields = words(line);
    if (fields.size() != 6) return std::nullopt;
    const auto bytes = parseIpv6Hex(fields[0]);
    const auto index = parseHex(fields[1]);
    const auto prefix = parseHex(fields[2]);
    const auto scope = parseHex(fields[3]);
    const auto flags = parseHex(fields[4]);
    if (!bytes || !index || !prefix || *prefix > 128 || !scope || !flags) return std::nullopt;
    return Address{*index, *bytes, std::string(fields[5]), *prefix, *scope, *flags};
}

std::vector<Address> readAddresses(Machine& machine) {
    std::vector<Address> addresses;
    const std::string text = machine.read(kPath, Machine::kTable).value_or("");
    for (const std::string_view line : lines(text)) {
        if (auto address = parseAddress(line)) {
            addresses.push_back(std::move(*address));
        } else {
            machine.sources().malformed(kPath, static_cast<std::size_t>(line.data() - text.data()));
        }
    }
    std::sort(addresses.begin(), addresses.end(), [](const Address& a, const Address& b) {
        return std::tie(a.interfaceIndex, a.bytes) < std::tie(b.interfaceIndex, b.bytes);
    });
    return addresses;
}

const char* scopeName(std::uint64_t scope) {
    switch (scope) {
        case 0x00:
            return "global";
        case 0x10:
            return "host";
        case 0x20:
            return "link";
        case 0x40:
            return "site";
        default:
            return "";
    }
}

Ipv6Bytes networkOf(const Address& address) {
    Ipv6Bytes network{};
    for (std::size_t i = 0; i < network.size() && i * 8 < address.prefixLength; ++i) {
        const std::uint64_t bits = std::min<std::uint64_t>(8, address.prefixLength - i * 8);
        network[i] = static_cast<unsigned char>(address.bytes[i] & (0xFFU << (8 - bits)));
    }
    return network;
}

void writeFlags(std::uint64_t flags, GroupWriter& out) {
    static constexpr std::pair<const char*, unsigned> kFlags[] = {{"Permanent", 0x80},
                                                                  {"Temporary", 0x01},
                                                                  {"Deprecated", 0x20},
                                                                  {"Tentative", 0x40},
                                                                  {"DadFailed", 0x08}};
    for (const auto& [field, flag] : kFlags) out.boolean(field, (flags & flag) != 0);
}

}  // namespace

void collectIPv6Address(Machine& machine, GroupWriter& out) {
    for (const Address& address : readAddresses(machine)) {
        out.beginInstance();
        out.text("InterfaceName", address.interface);
        out.text("Address", ipv6Text(address.bytes));
        out.number("PrefixLength", address.prefixLength);
        out.text("Network", ipv6Text(networkOf(address)));
        out.text("Scope", scopeName(address.scope));
        writeFlags(address.flags, out);
        out.list("Gateway", machine.shared<Ipv6Gateways>().of(address.interface));
        const NetInterface* interface = machine.shared<NetInterfaces>().byName(address.interface);
        if (interface != nullptr) out.text("MacAddress", interface->macAddress);
    }
}
