// Group "VirtualMachineGuest": one instance per virtual machine or container that is defined on this machine,
// by name.
#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/guests.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/text.h"

namespace {

// A guest that two managers know is reported as the first of them has it.
std::vector<Guest> readGuests(Machine& machine) {
    std::vector<Guest> guests;
    std::set<std::string> seen;
    for (const auto read : {readLibvirtGuests, readProxmoxGuests, readVirtualBoxGuests, readLxcGuests,
                            readNspawnGuests, readDockerGuests, readPodmanGuests}) {
        for (Guest& guest : read(machine)) {
            if (!guest.uuid.empty() && !seen.insert(guest.uuid).second) continue;
            guests.push_back(std::move(guest));
        }
    }
    std::stable_sort(guests.begin(), guests.end(),
                     [](const Guest& a, const Guest& b) { return naturalLess(a.name, b.name); });
    return guests;
}

}  // namespace

void collectVirtualMachineGuest(Machine& machine, GroupWriter& out) {
    for (Guest& guest : readGuests(machine)) {
        std::sort(guest.macAddresses.begin(), guest.macAddresses.end());
        out.beginInstance();
        out.text("Name", guest.name);
        out.text("Uuid", guest.uuid);
        out.text("Hypervisor", guest.hypervisor);
        out.text("Kind", guest.isContainer ? "Container" : "Machine");
        if (guest.running) out.text("State", *guest.running ? "Running" : "Stopped");
        out.number("MemoryBytes", guest.memoryBytes);
        out.number("VirtualCpus", guest.virtualCpus);
        out.list("MacAddresses", guest.macAddresses);
        out.list("Disks", guest.disks);
        out.boolean("Autostart", guest.autostart);
        out.text("Description", guest.description);
        out.text("Image", guest.image);
        if (guest.createdAt) out.text("CreatedAt", utcTime(*guest.createdAt));
        out.text("DefinitionPath", '/' + guest.path);
    }
}
