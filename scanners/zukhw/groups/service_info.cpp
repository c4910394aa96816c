// Group "ServiceInfo": one instance per system service, by name.
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/init_scripts.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/unit_files.h"

namespace {

struct Service {
    std::string name, description, manager, startMode, user, executable, path, type;
};

const char* nameOf(StartMode mode) {
    static constexpr const char* kNames[] = {"Enabled", "Disabled", "Static", "Masked", "Alias", "Generated"};
    return kNames[static_cast<int>(mode)];
}

std::vector<Service> readServices(Machine& machine) {
    std::vector<Service> services;
    std::set<std::string> native;
    for (const ServiceUnit& unit : readServiceUnits(machine)) {
        native.insert(unit.name);
        services.push_back({unit.name, unit.facts.description, "Systemd", nameOf(unit.mode), unit.facts.user,
                            unit.facts.executable, unit.path, unit.facts.type});
    }
    for (const InitScript& script : readInitScripts(machine)) {
        // systemd runs the unit of that name instead.
        if (native.count(script.name + ".service") != 0) continue;
        services.push_back({script.name, script.description, script.openRc ? "OpenRC" : "SysV",
                            script.enabled ? "Enabled" : "Disabled", "", "", script.path, ""});
    }
    std::stable_sort(services.begin(), services.end(),
                     [](const Service& a, const Service& b) { return naturalLess(a.name, b.name); });
    return services;
}

}  // namespace

void collectServiceInfo(Machine& machine, GroupWriter& out) {
    for (const Service& service : readServices(machine)) {
        out.beginInstance();
        out.text("Name", service.name);
        out.text("Description", service.description);
        out.text("Manager", service.manager);
        out.text("StartMode", service.startMode);
        out.text("User", service.user);
        out.text("Executable", service.executable);
        out.text("UnitPath", '/' + service.path);
        out.text("Type", service.type);
    }
}
