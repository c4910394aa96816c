#include "scanners/zukhw/pci_link.h"

#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

// "8.0 GT/s PCIe", "8 GT/s" with older kernels; "Unknown" when the link is down.
std::string speed(Machine& machine, const std::string& path) {
    const std::string text = machine.text(path);
    return startsWith(text, "Unknown") ? "" : text;
}

std::optional<std::uint64_t> width(Machine& machine, const std::string& path) {
    constexpr std::uint64_t kWidest = 32;  // 63 and 255 stand for a width that is not known
    const auto lanes = machine.number(path);
    return lanes && *lanes >= 1 && *lanes <= kWidest ? lanes : std::nullopt;
}

}  // namespace

void writePciLink(Machine& machine, const std::string& devicePath, GroupWriter& out) {
    out.text("LinkSpeed", speed(machine, devicePath + "/current_link_speed"));
    out.number("LinkWidth", width(machine, devicePath + "/current_link_width"));
    out.text("MaxLinkSpeed", speed(machine, devicePath + "/max_link_speed"));
    out.number("MaxLinkWidth", width(machine, devicePath + "/max_link_width"));
}
