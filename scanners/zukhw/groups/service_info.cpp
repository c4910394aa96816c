// Group "ServiceInfo": one instance per system service, by name.
#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/init_scripts.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/services.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/unit_files.h"

namespace {

struct Service {
    std::string name, description, manager, startMode, user, executable, path, type;
};

const char* nameOf(StartMode mode) {
    static constexpr const char* kNames[] = {"Enabled", "Disabled", "Static", "Masked", "Alias", "Generated"};
    return kNames[static_cast<int>(mode)];
}

// The unit that systemd runs instead of a script, or makes of it: that of "hwclock.sh" is hwclock.service.
std::string unitOf(std::string_view script) {
    constexpr std::string_view kShell = ".sh";
    if (endsWith(script, kShell)) script.remove_suffix(kShell.size());
    return std::string(script) + ".service";
}

std::vector<Service> readServices(Machine& machine) {
    std::vector<Service> services;
    std::set<std::string> native;
    for (ServiceUnit& unit : readServiceUnits(machine)) {
        native.insert(unit.name);
        UnitFacts& facts = unit.facts;
        services.push_back({std::move(unit.name), std::move(facts.description), "Systemd", nameOf(unit.mode),
                            std::move(facts.user), std::move(facts.executable), std::move(unit.path),
                            std::move(facts.type)});
    }
    for (const InitScript& script : readInitScripts(machine)) {
        if (native.count(unitOf(script.name)) != 0) continue;
        services.push_back({script.name, script.description, script.openRc ? "OpenRC" : "SysV",
                            script.enabled ? "Enabled" : "Disabled", "", "", script.path, ""});
    }
    std::stable_sort(services.begin(), services.end(),
                     [](const Service& a, const Service& b) { return naturalLess(a.name, b.name); });
    return services;
}

void writeState(const UnitStates& states, const Service& service, GroupWriter& out) {
    const auto found = states.find(service.manager == "Systemd" ? service.name : unitOf(service.name));
    if (found == states.end()) return;
    out.text("State", found->second.state);
    out.text("SubState", found->second.subState);
    out.number("MainPid", found->second.mainPid);
}

}  // namespace

void collectServiceInfo(Machine& machine, GroupWriter& out) {
    constexpr std::chrono::milliseconds kLimit(500);  // a quarter of what the group may take
    const std::string bus = "run/dbus/system_bus_socket";
    const bool canAsk = machine.live() && machine.exists("run/systemd/system") && machine.exists(bus);
    writeServices(machine, canAsk ? readUnitStates("unix:path=/" + bus, kLimit) : UnitStates(), out);
}

void writeServices(Machine& machine, const UnitStates& states, GroupWriter& out) {
    for (const Service& service : readServices(machine)) {
        out.beginInstance();
        out.text("Name", service.name);
        out.text("Description", service.description);
        out.text("Manager", service.manager);
        out.text("StartMode", service.startMode);
        writeState(states, service, out);
        out.text("User", service.user);
        out.text("Executable", service.executable);
        out.text("UnitPath", '/' + service.path);
        out.text("Type", service.type);
    }
}
