#include "scanners/zukhw/memory_modules.h"

#include <cstdint>
#include <optional>

#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::uint64_t kMega = 1024 * 1024;

// The parts of a POWER machine on the way to its modules: chip, controller, port.
bool leadsToModules(std::string_view node) {
    for (const std::string_view part :
         {"xscom@", "mcbist@", "mcs@", "mca@", "mi@", "mc@", "ocmb@", "memory-buffer@"}) {
        if (startsWith(node, part)) return true;
    }
    return false;
}

void findModules(Machine& machine, const std::string& node, unsigned depth,
                 std::vector<std::string>* modules) {
    constexpr unsigned kDeepest = 8;
    if (depth > kDeepest) return;
    const std::string start = node.empty() ? "" : node + '/';
    for (const std::string& name : machine.list(deviceTreeRoot(machine) + '/' + node)) {
        const std::string path = start + name;
        if (startsWith(name, "dimm")) modules->push_back(path);
        if (leadsToModules(name)) findModules(machine, path, depth + 1, modules);
    }
}

// "memory-dimm-ddr4" -> "DDR4"
std::string deviceTreeType(const std::string& deviceType) {
    constexpr std::string_view kPrefix = "memory-dimm-";
    if (!startsWith(deviceType, kPrefix)) return "";
    std::string type = deviceType.substr(kPrefix.size());
    for (char& c : type) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return type;
}

void writeDeviceTreeModule(Machine& machine, const std::string& node, GroupWriter& out) {
    const auto megabytes = deviceTreeCell(machine, node + "/size");
    const bool populated = megabytes && *megabytes != 0;
    const auto text = [&](const char* property) { return deviceTreeText(machine, node + '/' + property); };
    out.beginInstance();
    out.boolean("Populated", populated);
    out.hardware("Locator", text("ibm,loc-code"));
    if (!populated) return;
    out.number("SizeBytes", *megabytes * kMega);
    out.text("Type", deviceTreeType(text("device_type")));
    out.hardware("PartNumber", text("part-number"));
}

// "Registered-DDR4" and "Unbuffered-DDR3" name two things at once.
void writeEdacType(const std::string& kind, GroupWriter& out) {
    const std::size_t dash = kind.find('-');
    if (startsWith(kind, "Unknown")) return;
    out.text("Type", dash == std::string::npos ? kind : kind.substr(dash + 1));
    if (dash != std::string::npos) out.text("TypeDetail", kind.substr(0, dash));
}

void writeEdacModule(Machine& machine, const std::string& path, GroupWriter& out) {
    const auto megabytes = machine.number(path + "/size");
    if (!megabytes || *megabytes > UINT64_MAX / kMega) return;
    const std::string label = machine.text(path + "/dimm_label");
    out.beginInstance();
    out.boolean("Populated", *megabytes != 0);
    out.hardware("Locator", label.empty() ? machine.text(path + "/dimm_location") : label);
    if (*megabytes == 0) return;
    out.number("SizeBytes", *megabytes * kMega);
    writeEdacType(machine.text(path + "/dimm_mem_type"), out);
    const std::string mode = machine.text(path + "/dimm_edac_mode");
    if (!mode.empty() && mode != "Unknown") out.boolean("Ecc", mode != "None");
}

}  // namespace

bool writeDeviceTreeModules(Machine& machine, GroupWriter& out) {
    if (deviceTreeRoot(machine).empty()) return false;
    std::vector<std::string> modules;
    findModules(machine, "", 0, &modules);
    for (const std::string& module : modules) writeDeviceTreeModule(machine, module, out);
    return !modules.empty();
}

bool writeEdacModules(Machine& machine, GroupWriter& out) {
    static const std::string kControllers = "sys/devices/system/edac/mc/";
    bool found = false;
    for (const std::string& controller : machine.list("sys/devices/system/edac/mc")) {
        if (!startsWith(controller, "mc")) continue;
        const std::string directory = kControllers + controller;
        const std::string start = directory + '/';
        for (const std::string& module : machine.list(directory)) {
            if (!startsWith(module, "dimm") && !startsWith(module, "rank")) continue;
            writeEdacModule(machine, start + module, out);
            found = true;
        }
    }
    return found;
}
