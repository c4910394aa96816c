// Any datagram is read as the kernel's answer without harm. The first byte chooses what was asked for.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/netlink_messages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view datagram(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] % 2 == 0) {
        std::map<std::uint64_t, NetlinkLink> links;
        addNetlinkLinks(datagram, &links);
        if (links.size() > size || links.count(0) != 0) std::abort();
        return 0;
    }
    std::vector<NetlinkAddress> addresses;
    addNetlinkAddresses(datagram, &addresses);
    const auto isMask = [](const NetlinkAddress& address) { return address.prefixLength <= 32; };
    if (!std::all_of(addresses.begin(), addresses.end(), isMask)) std::abort();
    return 0;
}
