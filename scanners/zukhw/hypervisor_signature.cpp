#include "scanners/zukhw/hypervisor_signature.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

#include <algorithm>

#include "scanners/zukhw/cpu_info.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

struct Known {
    std::string_view signature;
    std::string_view hypervisor;
};
constexpr Known kKnown[] = {
    {"KVMKVMKVM", "KVM"},
    {"Linux KVM Hv", "KVM"},  // as it shows itself to guests that want Hyper-V
    {"Microsoft Hv", "Hyper-V"},
    {"VMwareVMware", "VMware"},
    {"XenVMMXenVMM", "Xen"},
    {"TCGTCGTCGTCG", "QEMU"},
    {"VBoxVBoxVBox", "VirtualBox"},
    {"bhyve bhyve", "bhyve"},
    {"prl hyperv", "Parallels"},
    {"lrpepyh  vr", "Parallels"},  // the same with its words the other way round
    {"ACRNACRNACRN", "ACRN"},
    {"OpenBSDVMM58", "OpenBSD VMM"},
    {"LKVMLKVMLKVM", "LKVM"},
    {"QNXQVMBSQG", "QNX"},
    {"QXNQSBMV", "QNX"},
    {"Jailhouse", "Jailhouse"},
    {"HAXMHAXMHAXM", "HAXM"},
    {"UnisysSpar64", "s-Par"},
    {"SRESRESRESRE", "LMHS SRE"},
};

#if defined(__x86_64__) || defined(__i386__)
std::string signatureAt(unsigned leaf) {
    unsigned highest = 0, words[3] = {};
    __cpuid(leaf, highest, words[0], words[1], words[2]);
    std::string text;
    for (const unsigned word : words) {
        for (unsigned shift = 0; shift < 32; shift += 8) text += static_cast<char>(word >> shift & 0xFFU);
    }
    return std::string(trim(text));
}

HypervisorSignature askProcessor() {
    constexpr unsigned kFirst = 0x40000000;
    constexpr unsigned kSecond = 0x40000100;
    constexpr unsigned kHypervisor = 1U << 31;
    HypervisorSignature found;
    unsigned a = 0, b = 0, c = 0, d = 0;
    found.present = __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & kHypervisor) != 0;
    if (!found.present) return found;
    found.text = signatureAt(kFirst);
    // KVM and Xen can stand in for Hyper-V, and then say who they are in the next place.
    if (hypervisorOfSignature(found.text) != "Hyper-V") return found;
    const std::string second = signatureAt(kSecond);
    if (!hypervisorOfSignature(second).empty()) found.text = second;
    return found;
}
#else
HypervisorSignature askProcessor() {
    return {};
}
#endif

}  // namespace

HypervisorSignature readHypervisorSignature(Machine& machine) {
    if (machine.live()) return askProcessor();
    const CpuInfo& info = machine.shared<CpuInfo>();
    const std::vector<unsigned> cpus = info.cpus();
    const unsigned cpu = cpus.empty() ? 0 : cpus.front();
    const std::vector<std::string_view> flags = words(info.value(cpu, {"flags"}));
    HypervisorSignature found;
    found.present = std::find(flags.begin(), flags.end(), "hypervisor") != flags.end();
    // Without a hypervisor processors answer with whatever; kernels before 2.6.31 do not know the flag.
    const std::string given(trim(machine.cpuidSignature()));
    const bool isKnown = !hypervisorOfSignature(given).empty();
    found.present = found.present || isKnown;
    if (isKnown) found.text = given;
    return found;
}

std::string_view hypervisorOfSignature(std::string_view signature) {
    const auto has = [&](const Known& known) { return known.signature == signature; };
    const auto found = std::find_if(std::begin(kKnown), std::end(kKnown), has);
    return found == std::end(kKnown) ? std::string_view() : found->hypervisor;
}
