// Group "InstalledPatches": patches of the running kernel, the processor's microcode, and the newest updates
// of packages, by kind, name and date.
#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/cpu_info.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/update_sources.h"

namespace {

constexpr std::size_t kMaxUpdates = 1000;

void writeSwitch(Machine& machine, const char* field, const std::string& path, GroupWriter& out) {
    if (const auto value = machine.number(path)) out.boolean(field, *value != 0);
}

void writeLivePatches(Machine& machine, GroupWriter& out) {
    const std::string directory = "sys/kernel/livepatch/";
    for (const std::string& name : machine.list("sys/kernel/livepatch")) {
        const std::string path = directory + name;
        out.beginInstance();
        out.text("Kind", "LivePatch");
        out.text("Name", name);
        writeSwitch(machine, "Enabled", path + "/enabled", out);
        writeSwitch(machine, "Transition", path + "/transition", out);
    }
}

void writeMicrocode(Machine& machine, GroupWriter& out) {
    std::string version = machine.text("sys/devices/system/cpu/cpu0/microcode/version");
    if (version.empty()) version = machine.shared<CpuInfo>().value(0, {"microcode"});
    if (version.empty()) return;
    out.beginInstance();
    out.text("Kind", "Microcode");
    out.text("Name", "microcode");
    out.text("ToVersion", version);
}

// The newest, by name and date.
std::vector<PackageUpdate> newestUpdates(Machine& machine) {
    std::vector<PackageUpdate> updates = readPackageUpdates(machine, kMaxUpdates);
    if (updates.size() > kMaxUpdates) {
        std::stable_sort(updates.begin(), updates.end(),
                         [](const PackageUpdate& a, const PackageUpdate& b) { return a.date > b.date; });
        updates.resize(kMaxUpdates);
    }
    std::stable_sort(updates.begin(), updates.end(), [](const PackageUpdate& a, const PackageUpdate& b) {
        if (a.name != b.name) return naturalLess(a.name, b.name);
        return std::tie(a.date, a.architecture, a.toVersion) < std::tie(b.date, b.architecture, b.toVersion);
    });
    return updates;
}

}  // namespace

void collectInstalledPatches(Machine& machine, GroupWriter& out) {
    writeLivePatches(machine, out);
    writeMicrocode(machine, out);
    for (const PackageUpdate& update : newestUpdates(machine)) {
        out.beginInstance();
        out.text("Kind", "Update");
        out.text("Name", update.name);
        out.text("Architecture", update.architecture);
        out.text("FromVersion", update.fromVersion);
        out.text("ToVersion", update.toVersion);
        out.text("InstallDate", update.date);
        out.text("Requester", update.requester);
    }
}
