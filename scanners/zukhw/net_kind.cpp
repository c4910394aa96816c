#include "scanners/zukhw/net_kind.h"

#include <algorithm>

namespace {

struct Named {
    std::string_view clue;
    std::string_view kind;
};

constexpr Named kByType[] = {
    {"wlan", "WiFi"},    {"wwan", "Wwan"},        {"bridge", "Bridge"},   {"bond", "Bond"},
    {"team", "Team"},    {"vlan", "Vlan"},        {"vxlan", "Vxlan"},     {"tun", "Tun"},
    {"tap", "Tun"},      {"veth", "Veth"},        {"macvlan", "Macvlan"}, {"macvtap", "Macvlan"},
    {"dsa", "Ethernet"}, {"gadget", "Ethernet"},  {"ipvlan", "Other"},    {"wireguard", "WireGuard"},
    {"dummy", "Dummy"},  {"ifb", "Ifb"},          {"can", "Can"},         {"vcan", "Can"},
    {"vxcan", "Can"},    {"ipoib", "Infiniband"},
};
constexpr Named kByFile[] = {
    {"wireless", "WiFi"}, {"phy80211", "WiFi"}, {"bridge", "Bridge"},
    {"bonding", "Bond"},  {"tun_flags", "Tun"},
};
constexpr Named kByHardware[] = {
    {"1", "Ethernet"},
    {"32", "Infiniband"},
    {"772", "Loopback"},
    {"280", "Can"},
};

template <std::size_t N>
std::string_view find(const Named (&table)[N], std::string_view clue) {
    for (const Named& row : table) {
        if (row.clue == clue) return row.kind;
    }
    return {};
}

std::string_view kindByFiles(const std::vector<std::string>& files) {
    for (const Named& row : kByFile) {
        if (std::find(files.begin(), files.end(), row.clue) != files.end()) return row.kind;
    }
    return {};
}

}  // namespace

std::string_view netKind(const NetKindClues& clues) {
    for (const std::string_view kind :
         {find(kByType, clues.deviceType), find(kByType, clues.infoKind), kindByFiles(clues.files)}) {
        if (!kind.empty()) return kind;
    }
    const std::string_view kind = find(kByHardware, clues.hardwareType);
    // Something that frames as Ethernet does, and that says it is another thing which we have no name for.
    const bool isNamed = !clues.deviceType.empty() || !clues.infoKind.empty();
    return kind.empty() || (kind == "Ethernet" && isNamed) ? "Other" : kind;
}
