// Group "IPXAddress": one instance per IPX interface. Kernels before 4.18 have this protocol.
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

// The name of the table has changed with the kernels.
std::string readTable(Machine& machine) {
    const std::string table = machine.text("proc/net/ipx/interface");
    return table.empty() ? machine.text("proc/net/ipx_interface") : table;
}

// Lower-case hex of the given width, or empty.
std::string hexId(std::string_view text, std::size_t width) {
    return text.size() == width && parseHex(text) ? toLower(text) : "";
}

std::string_view known(std::string_view text) {
    return text == "Unknown" || text == "None" ? std::string_view() : text;
}

}  // namespace

// "00001234   00001B0A1234   Yes     eth0       802.2", below a line of headings.
void collectIPXAddress(Machine& machine, GroupWriter& out) {
    constexpr std::size_t kFields = 5;
    constexpr std::size_t kNetworkDigits = 8;
    constexpr std::size_t kNodeDigits = 12;
    const std::string table = readTable(machine);
    for (const std::string_view line : lines(table)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() < kFields || fields[0] == "Network") continue;
        out.beginInstance();
        out.text("Network", hexId(fields[0], kNetworkDigits));
        out.text("NodeAddress", hexId(fields[1], kNodeDigits));
        out.boolean("Primary", fields[2] == "Yes");
        out.text("Device", known(fields[3]));
        out.text("FrameType", known(fields[4]));
    }
}
