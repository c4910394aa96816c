#include "scanners/zukhw/guest_tools.h"

#include "scanners/zukhw/machine.h"

std::vector<std::string> installedGuestTools(Machine& machine) {
    struct Trace {
        const char* path;
        const char* name;
    };
    static constexpr Trace kTraces[] = {
        {"usr/sbin/hv_kvp_daemon", "hv_kvp"},  {"usr/bin/vmtoolsd", "open-vm-tools"},
        {"usr/bin/qemu-ga", "qemu-ga"},        {"usr/sbin/qemu-ga", "qemu-ga"},
        {"sys/module/vboxguest", "vboxguest"}, {"sys/module/vboxsf", "vboxsf"},
        {"sys/module/vboxvideo", "vboxvideo"},
    };
    std::vector<std::string> tools;
    for (const Trace& trace : kTraces) {
        const bool isKnown = !tools.empty() && tools.back() == trace.name;
        if (!isKnown && machine.exists(trace.path)) tools.emplace_back(trace.name);
    }
    return tools;
}
