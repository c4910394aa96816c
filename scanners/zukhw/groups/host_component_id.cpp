// Group "HostComponentID": at most one instance, the identity of the physical machine below as far as it
// shows.
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/container.h"
#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/host_identity.h"
#include "scanners/zukhw/hyperv_pool.h"
#include "scanners/zukhw/hypervisor.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/partition_files.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/system_identity.h"
#include "scanners/zukhw/text.h"

namespace {

struct Host {
    const char* relation = nullptr;  // null: nothing shows
    std::string manufacturer, model, serialNumber, name;

    bool isKnown() const {
        return !isPlaceholder(manufacturer) || !isPlaceholder(model) || !isPlaceholder(serialNumber) ||
               !name.empty();
    }
};

// s390 shows the machine through every level. Its "Model" tells how many processors a partition or guest was
// given: the machine itself is told by its type.
void takeFromSysInfo(Machine& machine, Host& host) {
    const SysInfo& info = machine.shared<SysInfo>();
    if (info.value("Type").empty()) return;
    const SystemIdentity& identity = machine.shared<SystemIdentity>();
    host.manufacturer = identity.manufacturer;
    host.model = info.value("Type");
    host.serialNumber = identity.serialNumber;
}

// A partition is told which machine it is a part of.
Host partitionHost(Machine& machine) {
    const SystemIdentity& identity = machine.shared<SystemIdentity>();
    Host host{"LparHost", identity.manufacturer, identity.model, identity.serialNumber, ""};
    if (machine.shared<LparConfig>().available()) {
        host.model = deviceTreeText(machine, "model");
        host.serialNumber = deviceTreeText(machine, "system-id");
    }
    takeFromSysInfo(machine, host);
    return host;
}

// KVM on POWER tells its guests.
Host machineHost(Machine& machine) {
    const HyperVPool& pool = machine.shared<HyperVPool>();
    Host host{"VmHost", "", "", "", pool.value("PhysicalHostNameFullyQualified")};
    if (host.name.empty()) host.name = pool.value("HostName");
    if (!deviceTreeRoot(machine).empty()) {
        host.model = deviceTreeText(machine, "host-model");
        host.serialNumber = deviceTreeText(machine, "host-serial");
    }
    takeFromSysInfo(machine, host);
    return host;
}

// The machine as this system sees it; a container sees that of the system that it shares.
Host ownMachine(Machine& machine, const char* relation, const std::string& name) {
    const SystemIdentity& identity = machine.shared<SystemIdentity>();
    return {relation, identity.manufacturer, identity.model, identity.serialNumber, name};
}

Host findHost(Machine& machine) {
    const Hypervisor& hypervisor = machine.shared<Hypervisor>();
    if (hypervisor.isGuest() && hypervisor.kind == Hypervisor::Kind::Partition) return partitionHost(machine);
    if (hypervisor.isGuest()) {
        Host host = machineHost(machine);
        if (host.isKnown()) return host;
    }
    if (machine.shared<Container>().found) return ownMachine(machine, "ContainerHost", "");
    if (hypervisor.isGuest() || !hypervisor.known) return {};
    return ownMachine(machine, "Self", machine.shared<HostIdentity>().name);
}

}  // namespace

void collectHostComponentID(Machine& machine, GroupWriter& out) {
    const Host host = findHost(machine);
    if (host.relation == nullptr || !host.isKnown()) return;
    const Hypervisor& hypervisor = machine.shared<Hypervisor>();
    out.beginInstance();
    out.text("Relation", host.relation);
    out.hardware("Manufacturer", host.manufacturer);
    out.hardware("Model", host.model);
    out.hardware("SerialNumber", host.serialNumber);
    out.text("HostName", host.name);
    out.text("Hypervisor", hypervisor.name);
    out.text("HypervisorVersion", hypervisor.version);
}
