#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

constexpr char kGroup[] = "HostComponentID";

const std::string kIdentity =
    "sys/class/dmi/id/sys_vendor: Maker\nsys/class/dmi/id/product_name: Model\n"
    "sys/class/dmi/id/product_serial: S-1\nproc/sys/kernel/hostname: box\n";

std::string poolRecord(const std::string& key, const std::string& value) {
    return key + std::string(512 - key.size(), '\0') + value + std::string(2048 - value.size(), '\0');
}

TEST(HostComponentID, IsTheSystemItselfOnBareMetal) {
    TestMachine machine(kIdentity);
    const Fields expected = {{"Relation", "Self"},
                             {"Manufacturer", "Maker"},
                             {"Model", "Model"},
                             {"SerialNumber", "S-1"},
                             {"HostName", "box"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(HostComponentID, IsWhatAContainerShares) {
    TestMachine machine(kIdentity + ".dockerenv:\n");
    const Fields expected = {{"Relation", "ContainerHost"},
                             {"Manufacturer", "Maker"},
                             {"Model", "Model"},
                             {"SerialNumber", "S-1"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(HostComponentID, DoesNotShowThroughOtherHypervisors) {
    TestMachine machine("sys/class/dmi/id/sys_vendor: QEMU\nproc/sys/kernel/hostname: guest\n");
    EXPECT_EQ("", collectXml(*machine, kGroup));
}

const std::string kHyperV =
    "sys/class/dmi/id/sys_vendor: Microsoft Corporation\nsys/class/dmi/id/product_name: Virtual Machine\n";

TEST(HostComponentID, IsWhatHyperVTells) {
    TestMachine machine(kHyperV + "var/lib/hyperv/.kvp_pool_3 = " +
                        hexOf(poolRecord("HostName", "HOST1") +
                              poolRecord("PhysicalHostNameFullyQualified", "host1.example.org")) +
                        "\n");
    const Fields expected = {
        {"Relation", "VmHost"}, {"HostName", "host1.example.org"}, {"Hypervisor", "Hyper-V"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(HostComponentID, SurvivesAPoolThatIsCutOff) {
    TestMachine machine(
        kHyperV + "var/lib/hyperv/.kvp_pool_3 = " + hexOf(poolRecord("HostName", "HOST1") + "Host") + "\n");
    EXPECT_EQ("HOST1", collectOne(machine, kGroup).at("HostName"));
    EXPECT_EQ(1U, machine->sources().malformedCount());
}

TEST(HostComponentID, IsTheMachineThatAPartitionIsOf) {
    TestMachine power(
        "proc/ppc64/lparcfg: system_type=IBM,9009-22A\nproc/device-tree/model = " + hexOf("IBM,9009-22A\0"s) +
        "\nproc/device-tree/system-id = " + hexOf("IBM,0278A1B2C\0"s) + "\n");
    const Fields expected = {{"Relation", "LparHost"},
                             {"Manufacturer", "IBM"},
                             {"Model", "IBM,9009-22A"},
                             {"SerialNumber", "IBM,0278A1B2C"},
                             {"Hypervisor", "PowerVM"}};
    EXPECT_EQ(expected, collectOne(power, kGroup));
}

TEST(HostComponentID, ShowsThroughOnS390) {
    TestMachine machine(
        "proc/sysinfo:\n\tManufacturer: IBM\n\tType: 2964\n\tModel: 701 N63\n"
        "\tSequence Code: 00000000000DFEE7\n\tVM00 Control Program: z/VM    6.4.0\n");
    const Fields expected = {{"Relation", "VmHost"}, {"Manufacturer", "IBM"},
                             {"Model", "2964"},      {"SerialNumber", "00000000000DFEE7"},
                             {"Hypervisor", "z/VM"}, {"HypervisorVersion", "6.4.0"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

}  // namespace
