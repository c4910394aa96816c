// Group "VirtualMachine": what this system runs in: an instance for the machine level, then one for the
// container level.
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/container.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/guest_tools.h"
#include "scanners/zukhw/hypervisor.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_hypervisor.h"
#include "scanners/zukhw/system_identity.h"
#include "scanners/zukhw/text.h"

namespace {

// "i-" and 8 or 17 hex digits.
bool isInstanceId(std::string_view text) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    if (!startsWith(text, "i-")) return false;
    text.remove_prefix(2);
    return (text.size() == 8 || text.size() == 17) &&
           text.find_first_not_of(kHexDigits) == std::string_view::npos;
}

std::string instanceId(const Smbios& smbios) {
    std::string tag = smbios.string(2, 0x08);
    if (isInstanceId(trim(tag))) return tag;
    for (const SmbiosStructure* structure : smbios.ofType(11)) {
        for (const std::string_view text : structure->strings()) {
            if (isInstanceId(trim(text))) return std::string(text);
        }
    }
    return "";
}

void writeMachine(Machine& machine, const Hypervisor& hypervisor, GroupWriter& out) {
    const Smbios& smbios = machine.shared<Smbios>();
    out.beginInstance();
    out.text("Kind", hypervisor.kind == Hypervisor::Kind::Partition ? "Partition" : "Machine");
    out.text("Hypervisor", hypervisor.name);
    out.text("HypervisorVersion", hypervisor.version);
    out.text("Signature", hypervisor.signature);
    out.text("Role", hypervisor.host ? "Host" : "Guest");
    out.boolean("Paravirtualized", hypervisor.paravirtualized);
    out.text("CloudProvider", smbiosCloudProvider(smbios));
    out.text("InstanceId", instanceId(smbios));
    out.text("Uuid", machine.shared<SystemIdentity>().uuid);
    out.list("Evidence", hypervisor.evidence);
    out.list("ToolsInstalled", installedGuestTools(machine));
}

void writeContainer(const Container& container, GroupWriter& out) {
    out.beginInstance();
    out.text("Kind", "Container");
    out.text("Hypervisor", container.name);
    out.text("HypervisorVersion", container.version);
    out.text("Role", "Guest");
    out.text("ContainerId", container.id);
    out.list("Evidence", container.evidence);
}

}  // namespace

void collectVirtualMachine(Machine& machine, GroupWriter& out) {
    const Hypervisor& hypervisor = machine.shared<Hypervisor>();
    const Container& container = machine.shared<Container>();
    if (hypervisor.kind != Hypervisor::Kind::None) writeMachine(machine, hypervisor, out);
    if (container.found) writeContainer(container, out);
}
