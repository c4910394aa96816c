#include "scanners/zukhw/hypervisor.h"

#include <gtest/gtest.h>

#include "scanners/zukhw/hypervisor_signature.h"
#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

constexpr char kFlag[] = "proc/cpuinfo:\n\tprocessor : 0\n\tflags : fpu hypervisor lm\n";
constexpr char kNoFlag[] = "proc/cpuinfo:\n\tprocessor : 0\n\tflags : fpu lm\n";

std::string identity(const char* name, const char* value) {
    return "sys/class/dmi/id/"s + name + ": " + value + "\n";
}

struct Case {
    const char* why;
    std::string tree;
    const char* signature;
    const char* name;  // "-": no hypervisor
};

TEST(Hypervisor, IsFoundBySignatureAndFirmware) {
    const Case cases[] = {
        {"bare metal", kNoFlag, "", "-"},
        {"bare metal whose processor answers with rubbish", kNoFlag, "@@@", "-"},
        {"known signature", kFlag, "KVMKVMKVM", "KVM"},
        {"signature, and a kernel too old for the flag", kNoFlag, "Microsoft Hv", "Hyper-V"},
        {"flag alone", kFlag, "", ""},
        {"flag and unknown signature", kFlag, "?", ""},
        {"KVM with firmware of QEMU", kFlag + identity("sys_vendor", "QEMU"), "KVMKVMKVM", "KVM"},
        {"QEMU without KVM", kFlag + identity("sys_vendor", "QEMU"), "TCGTCGTCGTCG", "QEMU"},
        {"KVM that stands in for Hyper-V", kFlag + identity("sys_vendor", "QEMU"), "Microsoft Hv", "KVM"},
        {"Xen that stands in for Hyper-V", kFlag + identity("product_name", "HVM domU"), "Microsoft Hv",
         "Xen"},
        {"VirtualBox that answers as KVM", kFlag + identity("product_name", "VirtualBox"), "KVMKVMKVM",
         "VirtualBox"},
        {"firmware alone", identity("sys_vendor", "VMware, Inc."), "", "VMware"},
        {"Hyper-V's firmware",
         identity("sys_vendor", "Microsoft Corporation") + identity("product_name", "Virtual Machine"), "",
         "Hyper-V"},
        {"a computer of the same maker",
         identity("sys_vendor", "Microsoft Corporation") + identity("product_name", "Surface Pro"), "", "-"},
        {"Nutanix hypervisor", identity("sys_vendor", "Nutanix") + identity("product_name", "AHV"), "",
         "KVM"},
        {"Nutanix node", identity("sys_vendor", "Nutanix") + identity("product_name", "NX-3060"), "", "-"},
        {"cloud guest", identity("sys_vendor", "Amazon EC2") + identity("product_name", "m6g.large"), "", ""},
        {"a cloud's bare machine",
         identity("sys_vendor", "Amazon EC2") + identity("product_name", "m6g.metal"), "", "-"},
        {"user mode", "proc/cpuinfo:\n\tprocessor : 0\n\tvendor_id : User Mode Linux\n", "",
         "User Mode Linux"},
    };
    for (const Case& c : cases) {
        TestMachine machine(c.tree, c.signature);
        const Hypervisor& hypervisor = machine->shared<Hypervisor>();
        EXPECT_EQ(c.name[0] != '-', hypervisor.isGuest()) << c.why;
        EXPECT_EQ(c.name[0] == '-' ? "" : c.name, hypervisor.name) << c.why;
        EXPECT_TRUE(hypervisor.known) << c.why;
    }
}

TEST(Hypervisor, IsFoundByWhatItTellsItsGuests) {
    const Case cases[] = {
        {"Xen's interface", "proc/xen/capabilities:\n", "", "Xen"},
        {"Xen's type", "sys/hypervisor/type: xen\n", "", "Xen"},
        {"z/VM", "proc/sysinfo:\n\tLPAR Number: 1\n\tVM00 Control Program: z/VM    6.4.0\n", "", "z/VM"},
        {"KVM on s390", "proc/sysinfo:\n\tVM00 Control Program: KVM/Linux\n", "", "KVM"},
        {"a partition on s390", "proc/sysinfo:\n\tLPAR Number: 1\n", "", "PR/SM"},
        {"KVM on ARM", "proc/device-tree/hypervisor/compatible = " + hexOf("linux,kvm\0"s) + "\n", "", "KVM"},
        {"Xen on ARM", "proc/device-tree/hypervisor/compatible = " + hexOf("xen,xen-4.9\0xen,xen\0"s) + "\n",
         "", "Xen"},
        {"QEMU on ARM", "proc/device-tree/fw-cfg@9020000/reg = 00\n", "", "QEMU"},
        {"a virtual board", "proc/device-tree/compatible = " + hexOf("linux,dummy-virt\0"s) + "\n", "", ""},
        {"a real board", "proc/device-tree/compatible = " + hexOf("maker,board\0"s) + "\n", "", "-"},
        {"a partition on POWER", "proc/ppc64/lparcfg: system_type=IBM,9009-22A\n", "", "PowerVM"},
        {"QEMU on POWER, by its tree", "proc/device-tree/compatible = " + hexOf("qemu,pseries\0"s) + "\n", "",
         "QEMU"},
        {"QEMU on POWER, by its processors",
         "proc/cpuinfo:\n\tprocessor : 0\n\tcpu : POWER8\n\t\n\tmodel : IBM pSeries (emulated by qemu)\n", "",
         "QEMU"},
        {"x86 programs on POWER", "proc/cpuinfo:\n\tprocessor : 0\n\tvendor_id : PowerVM Lx86\n", "",
         "PowerVM Lx86"},
        {"QEMU on POWER", "proc/ppc64/lparcfg: system_type=IBM pSeries (emulated by qemu)\n", "", "QEMU"},
    };
    for (const Case& c : cases) {
        TestMachine machine(c.tree);
        const Hypervisor& hypervisor = machine->shared<Hypervisor>();
        EXPECT_EQ(c.name[0] != '-', hypervisor.isGuest()) << c.why;
        EXPECT_EQ(c.name[0] == '-' ? "" : c.name, hypervisor.name) << c.why;
    }
}

TEST(Hypervisor, TellsXensControlSystemFromItsGuests) {
    TestMachine host(
        "proc/xen/capabilities: control_d\nsys/hypervisor/type: xen\n"
        "sys/hypervisor/version/major: 4\nsys/hypervisor/version/minor: 17\nsys/hypervisor/version/extra: "
        ".2\n");
    EXPECT_EQ(Hypervisor::Kind::Machine, host->shared<Hypervisor>().kind);
    EXPECT_FALSE(host->shared<Hypervisor>().isGuest());
    EXPECT_EQ("4.17.2", host->shared<Hypervisor>().version);
    TestMachine byFeature("sys/hypervisor/type: xen\nsys/hypervisor/properties/features: 00000800\n");
    EXPECT_TRUE(byFeature->shared<Hypervisor>().host);
    TestMachine guest(
        "proc/xen/capabilities:\nsys/hypervisor/type: xen\nsys/hypervisor/properties/features: 00002705\n");
    EXPECT_TRUE(guest->shared<Hypervisor>().isGuest());
    EXPECT_EQ(false, guest->shared<Hypervisor>().paravirtualized);
}

TEST(Hypervisor, NamesTheSourcesThatAgree) {
    TestMachine machine(std::string(kFlag) + identity("sys_vendor", "QEMU"), "KVMKVMKVM");
    EXPECT_EQ((std::vector<std::string>{"CPUID", "SMBIOS"}), machine->shared<Hypervisor>().evidence);
    TestMachine other(std::string(kFlag) + identity("product_name", "VirtualBox"), "KVMKVMKVM");
    EXPECT_EQ((std::vector<std::string>{"SMBIOS"}), other->shared<Hypervisor>().evidence);
}

TEST(Hypervisor, IsUnknownOnAMachineThatTellsNothing) {
    TestMachine machine("");
    EXPECT_FALSE(machine->shared<Hypervisor>().known);
}

TEST(Hypervisor, IsToldByTheFirmwaresOwnBit) {
    const std::string firmware = structure(0, 0, std::string(15, '\0') + "\x10"s, {});
    TestMachine machine("sys/firmware/dmi/tables/DMI = " + hexOf(firmware) + "\n");
    EXPECT_TRUE(machine->shared<Hypervisor>().isGuest());
}

}  // namespace
