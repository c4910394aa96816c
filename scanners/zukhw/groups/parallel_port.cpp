// Group "ParallelPort": one instance per port that the kernel drives, by name; else per port of the plug and
// play firmware; else per connector that the firmware tells of.
#include <set>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kPort = "parport";
constexpr std::string_view kPnpDevices = "sys/bus/pnp/devices/";

std::vector<std::string> portNames(Machine& machine) {
    std::set<std::string> names;
    for (const char* directory : {"proc/sys/dev/parport", "sys/class/ppdev", "sys/bus/parport/devices"}) {
        for (const std::string& name : machine.list(directory)) {
            if (startsWith(name, kPort) && parseDecimal(name.substr(kPort.size()))) names.insert(name);
        }
    }
    std::vector<std::string> sorted(names.begin(), names.end());
    naturalSort(&sorted);
    return sorted;
}

// "MANUFACTURER:Hewlett-Packard;" among the lines of what the port was answered.
std::string answered(const std::string& text, const char* key) {
    std::string value(findValue(text, key, ':').value_or(""));
    if (endsWith(value, ";")) value.pop_back();
    return value;
}

void writePort(Machine& machine, const std::string& name, GroupWriter& out) {
    const std::string path = "proc/sys/dev/parport/" + name;
    const std::string addresses = machine.text(path + "/base-addr");  // the second is that of the extensions
    const std::vector<std::string_view> columns = words(addresses);
    out.text("DeviceName", name);
    if (!columns.empty()) out.text("IoPort", hex(parseDecimal(columns[0]), 4));
    out.number("Irq", machine.number(path + "/irq"));  // "-1" or "none" without one
    out.number("Dma", machine.number(path + "/dma"));
    const std::string modes = machine.text(path + "/modes");
    std::vector<std::string> known;
    for (const std::string_view mode : split(modes, ',')) known.emplace_back(mode);
    out.list("Modes", known);
    const std::string probe = machine.text(path + "/autoprobe");
    const std::string device = answered(probe, "MANUFACTURER") + ' ' + answered(probe, "MODEL");
    if (device.find("Unknown") == std::string::npos) out.text("AttachedDevice", device);
}

bool isParallelPort(const std::string& ids) {
    return ids.find("PNP0400") != std::string::npos || ids.find("PNP0401") != std::string::npos;
}

// Resources like "io 0x378-0x37f" and "irq 7".
void writePnpResources(const std::string& resources, GroupWriter& out) {
    std::string ioPort;
    std::optional<std::uint64_t> irq;
    for (const std::string_view line : lines(resources)) {
        const std::vector<std::string_view> columns = words(line);
        if (columns.size() < 2) continue;
        if (columns[0] == "io" && ioPort.empty())
            ioPort = hex(parseHex(columns[1].substr(0, columns[1].find('-'))), 4);
        if (columns[0] == "irq" && !irq) irq = parseDecimal(columns[1]);
    }
    out.text("IoPort", ioPort);
    out.number("Irq", irq);
}

bool writePnpPorts(Machine& machine, GroupWriter& out) {
    bool any = false;
    for (const std::string& name : machine.list(kPnpDevices)) {
        const std::string path = std::string(kPnpDevices) + name;
        if (!isParallelPort(machine.text(path + "/id"))) continue;
        any = true;
        out.beginInstance();
        out.text("DeviceName", name);
        writePnpResources(machine.text(path + "/resources"), out);
    }
    return any;
}

void writeConnectors(Machine& machine, GroupWriter& out) {
    constexpr unsigned kFirstParallel = 0x02;
    constexpr unsigned kLastParallel = 0x05;
    for (const SmbiosStructure* connector : machine.shared<Smbios>().ofType(8)) {
        const unsigned type = connector->byte(0x08).value_or(0);
        if (type < kFirstParallel || type > kLastParallel) continue;
        const std::string_view outside = connector->string(0x06);
        out.beginInstance();
        out.hardware("Connector", outside.empty() ? connector->string(0x04) : outside);
    }
}

}  // namespace

void collectParallelPort(Machine& machine, GroupWriter& out) {
    const std::vector<std::string> names = portNames(machine);
    for (const std::string& name : names) {
        out.beginInstance();
        writePort(machine, name, out);
    }
    if (names.empty() && !writePnpPorts(machine, out)) writeConnectors(machine, out);
}
