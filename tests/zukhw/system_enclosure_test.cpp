#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

constexpr char kGroup[] = "SystemEnclosure";

std::string dmi(const std::string& table) {
    return "sys/firmware/dmi/tables/DMI = " + hexOf(table) + "\n";
}

// Up to the number of power cords, then two contained elements of three bytes each and the SKU's number.
const std::string kFields = "\x01\x8A\x02\x03\x04\x03\x04\x05\x03\x00\x00\x00\x00\x02\x01\x02\x03"s;
const std::string kElements = "\x11\x00\x01\x12\x00\x01"s;

TEST(SystemEnclosure, TellsWhatTheTableTells) {
    TestMachine machine(
        dmi(structure(3, 0x0300, kFields + kElements + "\x05"s, {"Maker", "1.0", "S-1", "A-1", "SKU-1"})));
    const Fields fields = collectOne(machine, kGroup);
    const Fields expected = {
        {"Manufacturer", "Maker"},
        {"Type", "Notebook"},
        {"TypeCode", "10"},
        {"Lock", "true"},
        {"Version", "1.0"},
        {"SerialNumber", "S-1"},
        {"AssetTag", "A-1"},
        {"BootState", "Safe"},
        {"PowerSupplyState", "Warning"},
        {"ThermalState", "Critical"},
        {"SecurityStatus", "None"},
        {"HeightUnits", "2"},
        {"PowerCords", "1"},
        {"ContainedElements", "2"},
        {"Sku", "SKU-1"},
        {"Portable", "true"},
    };
    EXPECT_EQ(expected, fields);
}

TEST(SystemEnclosure, DoesNotReadTheSkuPastTheStructure) {
    TestMachine machine(dmi(structure(3, 1, kFields + kElements, {"Maker"})));
    EXPECT_EQ(0U, collectOne(machine, kGroup).count("Sku"));
}

TEST(SystemEnclosure, LeavesOutATypeThatTheFirmwareDoesNotKnow) {
    TestMachine machine(dmi(structure(3, 1, "\x01\x02"s, {"Maker"})));
    const Fields expected = {{"Manufacturer", "Maker"}, {"Lock", "false"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(SystemEnclosure, OrdersEnclosuresByHandle) {
    TestMachine machine(
        dmi(structure(3, 0x0310, "\x01\x1C"s, {"blade"}) + structure(3, 0x0300, "\x01\x1D"s, {"housing"})));
    const std::vector<Fields> all = collectInstances(*machine, kGroup);
    ASSERT_EQ(2U, all.size());
    EXPECT_EQ("Blade Enclosure", all[0].at("Type"));
    EXPECT_EQ("Blade", all[1].at("Type"));
}

TEST(SystemEnclosure, CountsPowerSuppliesThatArePresent) {
    const std::string head(10, '\0');
    TestMachine machine(dmi(structure(3, 1, "\x01\x17"s, {"Maker"}) +
                            structure(39, 2, head + "\x02\x00"s, {}) +
                            structure(39, 3, head + "\x00\x00"s, {})));
    EXPECT_EQ("1", collectOne(machine, kGroup).at("PowerSupplies"));
}

TEST(SystemEnclosure, FallsBackToWhatEverybodyMayRead) {
    TestMachine machine(
        "sys/class/dmi/id/chassis_vendor: Maker\nsys/class/dmi/id/chassis_type: 31\n"
        "sys/class/dmi/id/chassis_asset_tag: No Asset Tag\n");
    const Fields expected = {
        {"Manufacturer", "Maker"}, {"Type", "Convertible"}, {"TypeCode", "31"}, {"Portable", "true"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(SystemEnclosure, TakesTheDeviceTreesTypeWithoutSmbios) {
    TestMachine machine("proc/device-tree/chassis-type = 6c 61 70 74 6f 70 00\n");
    EXPECT_EQ((Fields{{"Type", "laptop"}}), collectOne(machine, kGroup));
}

TEST(SystemEnclosure, HasNoInstanceOnAMachineThatTellsNothing) {
    TestMachine machine("");
    EXPECT_EQ("", collectXml(*machine, kGroup));
}

}  // namespace
