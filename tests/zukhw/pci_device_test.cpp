#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scanners/zukhw/pci_vpd.h"
#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;
using namespace std::string_literals;

const std::string kIds =
    "usr/share/misc/pci.ids:\n"
    "\t8086  Intel Corporation\n"
    "\t\t10d3  82574L Gigabit Network Connection\n"
    "\t\t\t15d9 060a  X7SPA-H Motherboard\n"
    "\t15d9  Super Micro Computer Inc\n"
    "\tC 02  Network controller\n"
    "\t\t00  Ethernet controller\n"
    "\tC 06  Bridge\n"
    "\t\t04  PCI bridge\n";

// A bridge and a network card behind it.
const std::string kTree =
    "sys/bus/pci/devices/0000:00:1c.0 -> ../../../devices/pci0000:00/0000:00:1c.0\n"
    "sys/bus/pci/devices/0000:03:00.1 -> ../../../devices/pci0000:00/0000:00:1c.0/0000:03:00.1\n"
    "sys/devices/pci0000:00/0000:00:1c.0/uevent:\n"
    "\tDRIVER=pcieport\n\tPCI_CLASS=60400\n\tPCI_ID=8086:8C10\n\tPCI_SUBSYS_ID=0000:0000\n"
    "sys/devices/pci0000:00/0000:00:1c.0/0000:03:00.1/uevent:\n"
    "\tDRIVER=e1000e\n\tPCI_CLASS=20000\n\tPCI_ID=8086:10D3\n\tPCI_SUBSYS_ID=15D9:060A\n";

const std::string kCard = "sys/devices/pci0000:00/0000:00:1c.0/0000:03:00.1";

Fields card(const std::string& more) {
    TestMachine machine(kTree + more);
    return collectInstances(*machine, "PCIDevice").at(1);
}

TEST(PCIDevice, ReadsIdentifiersAndPlace) {
    TestMachine machine(kTree);
    const std::vector<Fields> devices = collectInstances(*machine, "PCIDevice");
    ASSERT_EQ(2U, devices.size());
    EXPECT_EQ((Fields{{"Address", "0000:00:1c.0"},
                      {"VendorId", "8086"},
                      {"DeviceId", "8c10"},
                      {"ClassCode", "060400"},
                      {"Driver", "pcieport"},
                      {"Bridge", "true"}}),
              devices[0]);
    EXPECT_EQ((Fields{{"Address", "0000:03:00.1"},
                      {"VendorId", "8086"},
                      {"DeviceId", "10d3"},
                      {"SubsystemVendorId", "15d9"},
                      {"SubsystemDeviceId", "060a"},
                      {"ClassCode", "020000"},
                      {"Driver", "e1000e"},
                      {"Bridge", "false"},
                      {"ParentAddress", "0000:00:1c.0"}}),
              devices[1]);
}

TEST(PCIDevice, NamesWhatTheListNames) {
    const Fields fields = card(kIds);
    EXPECT_THAT(fields, IsSupersetOf(Fields{{"Vendor", "Intel Corporation"},
                                            {"Device", "82574L Gigabit Network Connection"},
                                            {"SubsystemVendor", "Super Micro Computer Inc"},
                                            {"Subsystem", "X7SPA-H Motherboard"},
                                            {"ClassName", "Network controller"},
                                            {"SubclassName", "Ethernet controller"}}));
}

TEST(PCIDevice, TakesSingleAttributesWhereThereIsNoEvent) {
    TestMachine machine(
        "sys/bus/pci/devices/0000:00:02.0/vendor: 0x1af4\n"
        "sys/bus/pci/devices/0000:00:02.0/device: 0x1041\n"
        "sys/bus/pci/devices/0000:00:02.0/class: 0x020000\n"
        "sys/bus/pci/devices/0000:00:02.0/revision: 0x01\n"
        "sys/bus/pci/devices/0000:00:02.0/driver -> ../../../bus/pci/drivers/virtio-pci\n");
    EXPECT_THAT(collectOne(machine, "PCIDevice"), IsSupersetOf(Fields{{"VendorId", "1af4"},
                                                                      {"DeviceId", "1041"},
                                                                      {"ClassCode", "020000"},
                                                                      {"Revision", "01"},
                                                                      {"Driver", "virtio-pci"}}));
}

TEST(PCIDevice, OrdersAddressesAsNumbers) {
    std::string tree;
    for (const char* address : {"0000:1a:00.0", "10000:00:00.0", "0000:09:00.0", "not:an:address"}) {
        tree += "sys/bus/pci/devices/" + std::string(address) + "/vendor: 0x8086\n";
    }
    TestMachine machine(tree);
    std::string order;
    for (const Fields& fields : collectInstances(*machine, "PCIDevice")) order += fields.at("Address") + ' ';
    EXPECT_EQ("0000:09:00.0 0000:1a:00.0 10000:00:00.0 ", order);
}

struct Attribute {
    const char* file;
    const char* text;
    const char* field;
    const char* expected;  // empty: absent
};
const Attribute kAttributes[] = {
    {"irq", "16", "Irq", "16"},
    {"irq", "0", "Irq", ""},
    {"numa_node", "1", "NumaNode", "1"},
    {"numa_node", "-1", "NumaNode", ""},
    {"current_link_speed", "8.0 GT/s PCIe", "LinkSpeed", "8.0 GT/s PCIe"},
    {"current_link_speed", "Unknown", "LinkSpeed", ""},
    {"current_link_width", "4", "LinkWidth", "4"},
    {"current_link_width", "0", "LinkWidth", ""},
    {"max_link_width", "255", "MaxLinkWidth", ""},
    {"label", "Onboard LAN", "Label", "Onboard LAN"},
    {"acpi_index", "3", "Label", "3"},
    {"removable", "removable", "Removable", "true"},
    {"removable", "fixed", "Removable", "false"},
    {"removable", "unknown", "Removable", ""},
    {"boot_vga", "1", "BootVga", "true"},
    {"boot_vga", "0", "BootVga", "false"},
};

TEST(PCIDevice, ReadsOptionalAttributes) {
    for (const Attribute& row : kAttributes) {
        const Fields fields = card(kCard + '/' + row.file + ": " + row.text + '\n');
        EXPECT_EQ(row.expected, valueOf(fields, row.field)) << row.file << ' ' << row.text;
    }
}

TEST(PCIDevice, FindsThePhysicalSlotByAllFunctions) {
    EXPECT_EQ("5-1", card("sys/bus/pci/slots/5-1/address: 0000:03:00\n").at("PhysicalSlot"));
}

TEST(PCIDevice, FindsTheSlotThatTheFirmwareNames) {
    const std::string slot =
        structure(9, 1, "\x01\xA5\x0D\x04\x03\x01\x00\x0C\x01\x00\x00\x03\x01"s, {"SLOT 3"});
    EXPECT_EQ("SLOT 3", card("sys/firmware/dmi/tables/DMI = " + hexOf(slot) + "\n").at("SlotDesignation"));
}

TEST(PCIDevice, FindsTheOnboardDeviceThatTheFirmwareNames) {
    const std::string onboard = structure(41, 1, "\x01\x85\x01\x00\x00\x03\x01"s, {"NIC 2"});
    EXPECT_EQ("NIC 2", card("sys/firmware/dmi/tables/DMI = " + hexOf(onboard) + "\n").at("SlotDesignation"));
}

TEST(PCIDevice, TellsWhichFunctionsAreVirtual) {
    const Fields fields =
        card(kCard + "/sriov_numvfs: 2\n" + kCard + "/virtfn0 -> ../0000:03:10.1\n" + kCard +
             "/virtfn1 -> ../0000:03:10.3\n" + kCard + "/physfn -> ../0000:03:00.0\n");
    EXPECT_EQ("0000:03:10.1; 0000:03:10.3", fields.at("VirtualFunctions"));
    EXPECT_EQ("0000:03:00.0", fields.at("PhysicalFunction"));
}

TEST(PCIDevice, BelievesNoCountOfVirtualFunctions) {
    EXPECT_EQ(0U, card(kCard + "/sriov_numvfs: 18446744073709551615\n").count("VirtualFunctions"));
}

// An identifier string, then fields: PN, SN, and an end.
const std::string kProductData =
    "\x82\x04\x00"s + "Card"s + "\x90\x0F\x00"s + "PN\x03"s + "A-1"s + "SN\x06"s + "XY 123"s + "\x78"s;

TEST(PciVpd, FindsTheSerialNumber) {
    EXPECT_EQ("XY 123", pciSerialNumber(kProductData));
}

TEST(PciVpd, FindsNothingInDataThatBreaksOff) {
    for (std::size_t size = 0; size < kProductData.size() - 1; ++size) {
        EXPECT_EQ("", pciSerialNumber(kProductData.substr(0, size))) << size;
    }
}

TEST(PciVpd, FindsNothingInDataOfOneByteOverAndOver) {
    for (const char byte : {'\0', '\x02', '\x78', '\x82', '\x90', '\xFF'}) {
        EXPECT_EQ("", pciSerialNumber(std::string(256, byte)));
    }
}

TEST(PCIDevice, ReportsTheSerialNumberOfItsProductData) {
    EXPECT_EQ("XY 123", card(kCard + "/vpd = " + hexOf(kProductData) + "\n").at("SerialNumber"));
}

}  // namespace
