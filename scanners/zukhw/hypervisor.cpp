#include "scanners/zukhw/hypervisor.h"

#include <algorithm>

#include "scanners/zukhw/cpu_info.h"
#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/hypervisor_signature.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/partition_files.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_hypervisor.h"
#include "scanners/zukhw/text.h"

namespace {

using Kind = Hypervisor::Kind;

// What one source says. A name may be empty: there is a hypervisor, and the source does not know which.
struct Finding {
    const char* source;
    std::string name;
    Kind kind = Kind::Machine;
};

bool isMarked(std::string_view name) {
    for (const char* marked : {"VirtualBox", "VMware", "Parallels", "bhyve", "Apple Virtualization"}) {
        if (name == marked) return true;
    }
    return false;
}

// Of two names the one that is nearer to the truth: hypervisors stand in for each other in what they answer
// to CPUID, and firmware is often borrowed from QEMU.
std::string refine(const std::string& byProcessor, std::string_view byFirmware) {
    if (byProcessor.empty() || isMarked(byFirmware)) {
        return byFirmware.empty() ? byProcessor : std::string(byFirmware);
    }
    if (byProcessor != "Hyper-V") return byProcessor;
    if (byFirmware == "QEMU" || byFirmware == "KVM") return "KVM";
    return byFirmware == "Xen" ? "Xen" : byProcessor;
}

std::string_view firstCpuValue(Machine& machine, std::string_view key) {
    const CpuInfo& info = machine.shared<CpuInfo>();
    const std::vector<unsigned> cpus = info.cpus();
    return info.value(cpus.empty() ? 0 : cpus.front(), {key});
}

void askProcessor(Machine& machine, Hypervisor* hypervisor, std::vector<Finding>* findings) {
    const HypervisorSignature signature = readHypervisorSignature(machine);
    hypervisor->signature = signature.text;
    if (signature.present) {
        const bool byFlag = !machine.live() && signature.text.empty();
        const std::string name(hypervisorOfSignature(signature.text));
        findings->push_back({byFlag ? "/proc/cpuinfo" : "CPUID", name});
    }
    if (startsWith(firstCpuValue(machine, "vendor_id"), "User Mode Linux")) {
        findings->push_back({"/proc/cpuinfo", "User Mode Linux"});
    }
    if (startsWith(firstCpuValue(machine, "vendor_id"), "PowerVM Lx86")) {
        findings->push_back({"/proc/cpuinfo", "PowerVM Lx86"});  // runs programs for x86 on POWER
    }
    // "IBM pSeries (emulated by qemu)" stands behind the processors of a POWER machine.
    const bool isEmulated =
        firstCpuValue(machine, "model").find("emulated by qemu") != std::string_view::npos;
    if (isEmulated || startsWith(firstCpuValue(machine, "model name"), "QEMU Virtual CPU")) {
        findings->push_back({"/proc/cpuinfo", "QEMU"});
    }
}

// Firmware of clouds is the same on their bare machines.
bool isCloudGuest(const Smbios& smbios, bool isX86) {
    return !isX86 && smbiosCloudProvider(smbios) == "Amazon EC2" &&
           !endsWith(trim(smbios.string(1, 0x05)), ".metal");
}

void askFirmware(const Smbios& smbios, bool isX86, std::vector<Finding>* findings) {
    const std::string_view name = smbiosHypervisor(smbios);
    if (!name.empty() || isVirtualBySmbios(smbios) || isCloudGuest(smbios, isX86)) {
        findings->push_back({"SMBIOS", std::string(name)});
    }
}

void askXen(Machine& machine, Hypervisor* hypervisor, std::vector<Finding>* findings) {
    static const std::string kXen = "sys/hypervisor/";
    const auto capabilities =
        machine.exists("proc/xen") ? machine.read("proc/xen/capabilities") : std::nullopt;
    if (capabilities) findings->push_back({"/proc/xen/capabilities", "Xen"});
    hypervisor->host = capabilities && capabilities->find("control_d") != std::string::npos;
    if (!machine.exists(kXen) || machine.text(kXen + "type") != "xen") return;
    findings->push_back({"/sys/hypervisor/type", "Xen"});
    const std::string major = machine.text(kXen + "version/major");
    if (!major.empty()) {
        hypervisor->version =
            major + '.' + machine.text(kXen + "version/minor") + machine.text(kXen + "version/extra");
    }
    // Bits of what the kernel may rely on: only the control system has bit 11, only guests with hardware
    // support have bit 8.
    const auto features = machine.hexNumber(kXen + "properties/features");
    if (!features) return;
    hypervisor->host = hypervisor->host || (*features >> 11 & 1U) != 0;
    hypervisor->paravirtualized = (*features >> 8 & 1U) == 0;
}

// "z/VM    6.4.0", "KVM/Linux"
void askSysInfo(Machine& machine, Hypervisor* hypervisor, std::vector<Finding>* findings) {
    const SysInfo& info = machine.shared<SysInfo>();
    const std::vector<std::string_view> program = words(info.value("VM00 Control Program"));
    if (!program.empty()) {
        const bool isKvm = startsWith(program[0], "KVM");
        findings->push_back({"/proc/sysinfo", isKvm ? "KVM" : std::string(program[0])});
        if (program.size() > 1) hypervisor->version = program[1];
    } else if (!info.value("LPAR Number").empty()) {
        findings->push_back({"/proc/sysinfo", "PR/SM", Kind::Partition});
    }
}

std::string deviceTreeHypervisor(Machine& machine) {
    const std::string compatible = deviceTreeText(machine, "hypervisor/compatible");
    if (compatible == "linux,kvm") return "KVM";
    if (compatible.find("xen") != std::string::npos) return "Xen";
    return startsWith(compatible, "vmware") ? "VMware" : "";
}

void askDeviceTree(Machine& machine, std::vector<Finding>* findings) {
    const std::string& root = deviceTreeRoot(machine);
    if (root.empty()) return;
    const std::string name = deviceTreeHypervisor(machine);
    if (!name.empty()) findings->push_back({"/proc/device-tree/hypervisor", name});
    const std::vector<std::string> nodes = machine.list(root);
    const auto isConfig = [](const std::string& node) { return startsWith(node, "fw-cfg"); };
    const bool isEmulated = deviceTreeText(machine, "model").find("emulated by qemu") != std::string::npos ||
                            deviceTreeLists(machine, "compatible", "qemu,pseries");
    if (isEmulated || std::any_of(nodes.begin(), nodes.end(), isConfig)) {
        findings->push_back({"/proc/device-tree", "QEMU"});
    } else if (deviceTreeLists(machine, "compatible", "linux,dummy-virt")) {
        findings->push_back({"/proc/device-tree", ""});
    }
}

void askLparConfig(Machine& machine, std::vector<Finding>* findings) {
    const LparConfig& config = machine.shared<LparConfig>();
    if (!config.available()) return;
    if (config.value("system_type").find("emulated by qemu") != std::string_view::npos) {
        findings->push_back({"/proc/ppc64/lparcfg", "QEMU"});
    } else {
        findings->push_back({"/proc/ppc64/lparcfg", "PowerVM", Kind::Partition});
    }
}

bool areAlike(const std::string& name, const std::string& other) {
    const bool virtio = (name == "KVM" && other == "QEMU") || (name == "QEMU" && other == "KVM");
    return name == other || other.empty() || virtio;
}

}  // namespace

Hypervisor::Hypervisor(Machine& machine) {
    const Smbios& smbios = machine.shared<Smbios>();
    const bool isX86 = !firstCpuValue(machine, "flags").empty();
    std::vector<Finding> findings;
    askProcessor(machine, this, &findings);
    askFirmware(smbios, isX86, &findings);
    askXen(machine, this, &findings);
    askSysInfo(machine, this, &findings);
    askDeviceTree(machine, &findings);
    askLparConfig(machine, &findings);
    known = !findings.empty() || isX86 || smbios.available() || smbios.hasIdentity() ||
            !deviceTreeRoot(machine).empty();
    if (findings.empty()) return;
    kind = findings.front().kind;
    for (const Finding& finding : findings) {
        if (name.empty()) name = finding.name;
    }
    name = refine(name, smbiosHypervisor(smbios));
    for (const Finding& finding : findings) {
        const bool isNew = evidence.empty() || evidence.back() != finding.source;
        if (isNew && areAlike(name, finding.name)) evidence.emplace_back(finding.source);
    }
}
