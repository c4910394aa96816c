#include "scanners/zukhw/host_identity.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

HostIdentity::HostIdentity(Machine& machine) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    name = machine.text("proc/sys/kernel/hostname");
    if (name.empty()) name = machine.text("etc/hostname");
    const std::string id = toLower(machine.text("etc/machine-id"));  // "uninitialized" until the first boot
    if (id.size() == 32 && id.find_first_not_of(kHexDigits) == std::string::npos) machineId = id;
}
