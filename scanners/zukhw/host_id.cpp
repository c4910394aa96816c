#include "scanners/zukhw/host_id.h"

#include <array>
#include <cstdio>

#include "scanners/shared/bytes.h"
#include "scanners/zukhw/machine.h"

HostId::HostId(Machine& machine) {
    constexpr unsigned kSize = 4;
    const std::string file = machine.read("etc/hostid").value_or("");
    const auto number = Bytes(file, Bytes::Order::Little).number(0, kSize);
    if (!number || file.size() != kSize) return;
    std::array<char, 2 * kSize + 1> hex{};
    std::snprintf(hex.data(), hex.size(), "%08x", static_cast<unsigned>(*number));
    text_ = hex.data();
}
