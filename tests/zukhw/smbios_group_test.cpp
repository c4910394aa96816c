#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

constexpr char kGroup[] = "SMBIOS";

Fields fieldsOf(const std::string& table) {
    TestMachine machine("sys/firmware/dmi/tables/DMI = " + hexOf(table) + "\n");
    return collectOne(machine, kGroup);
}

TEST(SmbiosGroup, KeepsPlaceholders) {
    const Fields fields =
        fieldsOf(structure(1, 1, "\x01\x02"s, {"To Be Filled By O.E.M.", "System Product Name"}));
    EXPECT_EQ("To Be Filled By O.E.M.", fields.at("SystemManufacturer"));
    EXPECT_EQ("System Product Name", fields.at("SystemProductName"));
}

TEST(SmbiosGroup, DescribesTheTable) {
    const Fields fields =
        fieldsOf(structure(17, 1, "", {}) + structure(1, 2, "", {}) + structure(17, 3, "", {}));
    EXPECT_EQ("18", fields.at("TableBytes"));
    EXPECT_EQ("3", fields.at("Structures"));
    EXPECT_EQ("1:1; 17:2", fields.at("StructureTypes"));
    EXPECT_EQ("sysfs-tables", fields.at("TableSource"));
    EXPECT_EQ(64U, fields.at("TableSha256").size());
}

TEST(SmbiosGroup, ReckonsTheSizeOfTheRom) {
    const auto romBytes = [](char blocks, const std::string& extended) {
        const Fields fields =
            fieldsOf(structure(0, 0, std::string(5, '\0') + blocks + std::string(14, '\0') + extended, {}));
        return valueOf(fields, "BiosRomBytes");
    };
    EXPECT_EQ("65536", romBytes('\0', ""));
    EXPECT_EQ("16711680", romBytes('\xFE', ""));
    EXPECT_EQ("33554432", romBytes('\xFF', "\x20\x00"s));    // megabytes
    EXPECT_EQ("2147483648", romBytes('\xFF', "\x02\x40"s));  // gigabytes
    EXPECT_EQ("16777216", romBytes('\xFF', ""));             // before version 3.1
}

TEST(SmbiosGroup, TakesTheMotherboardOfSeveralBoards) {
    const std::string before(5, '\0');
    const Fields fields = fieldsOf(structure(2, 1, "\x00\x01"s + before + "\x00\x00\x03"s, {"riser"}) +
                                   structure(2, 2, "\x00\x01"s + before + "\x00\x00\x0A"s, {"board"}));
    EXPECT_EQ("board", fields.at("BoardProduct"));
    EXPECT_EQ("Motherboard", fields.at("BoardType"));
}

TEST(SmbiosGroup, ListsDevicesInTheTablesOrder) {
    const Fields fields = fieldsOf(structure(41, 1, "\x01\x85\x01\x00\x00\x02\x01"s, {"LAN"}) +
                                   structure(41, 2, "\x01\x03\x01\xFF\xFF\xFF\xFF"s, {"Video"}));
    EXPECT_EQ("LAN Ethernet enabled 0000:02:00.1; Video Video disabled", fields.at("OnboardDevices"));
}

TEST(SmbiosGroup, ListsDevicesOfOldTables) {
    EXPECT_EQ("VGA Video enabled; Audio Sound disabled",
              fieldsOf(structure(10, 1, "\x83\x01\x07\x02"s, {"VGA", "Audio"})).at("OnboardDevices"));
}

TEST(SmbiosGroup, ListsSlotsAndPorts) {
    const Fields fields =
        fieldsOf(structure(9, 1, "\x01\xB6\x0D\x04\x04\x01\x00\x00\x00\x00\x00\x03\x00"s, {"SLOT 1"}) +
                 structure(8, 2, "\x01\x00\x02\x12\x10"s, {"J1", "USB 1"}) +
                 structure(8, 3, "\x00\x00\x01\x0B\x1F"s, {"LAN"}));
    EXPECT_EQ("SLOT 1 PCI Express Gen 3 x16 In Use Long 0000:03:00.0", fields.at("Slots"));
    EXPECT_EQ("J1/USB 1 USB; LAN Network Port", fields.at("PortConnectors"));
}

TEST(SmbiosGroup, TellsSecuritySettingsThatAreKnown) {
    EXPECT_EQ("Power-On Password=Disabled; Administrator Password=Enabled; Front Panel Reset=Not Implemented",
              fieldsOf(structure(24, 1, "\x36"s, {})).at("SecuritySettings"));
}

TEST(SmbiosGroup, TellsWhatEverybodyMayRead) {
    TestMachine machine(
        "sys/class/dmi/id/sys_vendor: Maker\nsys/class/dmi/id/chassis_type: 9\n"
        "sys/class/dmi/id/bios_release: 1.29\n");
    const Fields expected = {{"TableSource", "sysfs-id"},
                             {"BiosRelease", "1.29"},
                             {"SystemManufacturer", "Maker"},
                             {"ChassisType", "Laptop"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(SmbiosGroup, HasNoInstanceWithoutSmbios) {
    TestMachine machine("sys/class/net/\n");
    EXPECT_EQ("", collectXml(*machine, kGroup));
}

}  // namespace
