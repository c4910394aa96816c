#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

constexpr char kGroup[] = "MemoryModules";

std::string dmi(const std::string& table) {
    return "sys/firmware/dmi/tables/DMI = " + hexOf(table) + "\n";
}

const std::string kArray = structure(16, 0x1000, "\x03\x03\x06\x00\x00\x80\x00\xFE\xFF\x04\x00"s, {});

// A memory device of array 1000h from offset 04h up to and without offset 54h.
std::string deviceFields(const std::string& size, const std::string& speed) {
    return "\x00\x10\xFE\xFF\x48\x00\x40\x00"s + size + "\x09\x00\x01\x02\x22\x80\x20"s + speed +
           "\x03\x04\x05\x06\x02\x00\x00\x01\x00"s + speed + "\x4C\x04\xE2\x04\xB0\x04"s +
           "\x03\x00\x00\x07\x80\xCE\x00\x00\x00\x00\x00\x00"s + std::string(8, '\0') +
           "\x00\x00\x00\x00\x04\x00\x00\x00"s + std::string(16, '\xFF');
}

const std::vector<std::string> kStrings = {"A1", "Bank 0", "80CE000080CE", "S-1", "A-1", "P-1", "F-1"};

TEST(MemoryModules, TellsWhatTheTableTells) {
    TestMachine machine(
        dmi(kArray + structure(17, 0x1100, deviceFields("\x00\x40"s, "\xC0\x12"s), kStrings)));
    const Fields expected = {
        {"Populated", "true"},
        {"Locator", "A1"},
        {"BankLocator", "Bank 0"},
        {"SizeBytes", "17179869184"},
        {"NonVolatileBytes", "0"},
        {"VolatileBytes", "17179869184"},
        {"FormFactor", "DIMM"},
        {"Type", "DDR5"},
        {"TypeCode", "34"},
        {"TypeDetail", "Synchronous; Registered (Buffered)"},
        {"TotalWidthBits", "72"},
        {"DataWidthBits", "64"},
        {"Ecc", "true"},
        {"MaxSpeedMTs", "4800"},
        {"ConfiguredSpeedMTs", "4800"},
        {"MinVoltageMillivolts", "1100"},
        {"MaxVoltageMillivolts", "1250"},
        {"ConfiguredVoltageMillivolts", "1200"},
        {"Manufacturer", "80CE000080CE"},
        {"ManufacturerName", "Samsung"},
        {"PartNumber", "P-1"},
        {"SerialNumber", "S-1"},
        {"AssetTag", "A-1"},
        {"Rank", "2"},
        {"Technology", "DRAM"},
        {"FirmwareVersion", "F-1"},
        {"ArrayLocation", "System Board"},
        {"ArrayUse", "System Memory"},
        {"ArrayHandle", "1000"},
        {"Handle", "1100"},
    };
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(MemoryModules, TellsOfAnEmptySlotOnlyWhereItIs) {
    TestMachine machine(
        dmi(kArray + structure(17, 0x1100, deviceFields("\x00\x00"s, "\xC0\x12"s), kStrings)));
    const Fields expected = {{"Populated", "false"}, {"Locator", "A1"},       {"BankLocator", "Bank 0"},
                             {"FormFactor", "DIMM"}, {"ArrayHandle", "1000"}, {"Handle", "1100"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(MemoryModules, FindsLargeSpeedsInTheirOwnFields) {
    const std::string large = "\x00\x00\x01\x00"s + "\x01\x00\x01\x80"s;  // the highest bit is reserved
    TestMachine machine(dmi(structure(17, 1, deviceFields("\x00\x40"s, "\xFF\xFF"s) + large, kStrings)));
    const Fields fields = collectOne(machine, kGroup);
    EXPECT_EQ("65536", fields.at("MaxSpeedMTs"));
    EXPECT_EQ("65537", fields.at("ConfiguredSpeedMTs"));
}

TEST(MemoryModules, LeavesOutSpeedsWithoutTheirOwnFields) {
    TestMachine machine(dmi(structure(17, 1, deviceFields("\x00\x40"s, "\xFF\xFF"s), kStrings)));
    EXPECT_EQ(0U, collectOne(machine, kGroup).count("MaxSpeedMTs"));
}

TEST(MemoryModules, NamesTheMakerByItsIdentityWhenThereIsNoText) {
    std::vector<std::string> strings = kStrings;
    strings[2] = "Unknown";
    TestMachine machine(dmi(structure(17, 1, deviceFields("\x00\x40"s, "\xC0\x12"s), strings)));
    const Fields fields = collectOne(machine, kGroup);
    EXPECT_EQ(0U, fields.count("Manufacturer"));
    EXPECT_EQ("Samsung", fields.at("ManufacturerName"));
}

TEST(MemoryModules, DoesNotNameAMakerTwice) {
    std::vector<std::string> strings = kStrings;
    strings[2] = "Samsung";
    TestMachine machine(dmi(structure(17, 1, deviceFields("\x00\x40"s, "\xC0\x12"s), strings)));
    EXPECT_EQ(0U, collectOne(machine, kGroup).count("ManufacturerName"));
}

TEST(MemoryModules, MapsAModuleByItsOwnRange) {
    const std::string mapped = structure(
        20, 0x1400, "\x00\x00\x40\x00\xFF\xFF\x7F\x00\x00\x11\x00\x13"s + std::string(3, '\xFF'), {});
    TestMachine machine(
        dmi(kArray + structure(17, 0x1100, deviceFields("\x00\x10"s, "\xC0\x12"s), kStrings) + mapped));
    const Fields fields = collectOne(machine, kGroup);
    EXPECT_EQ("4294967296", fields.at("MappedStart"));
    EXPECT_EQ("8589934591", fields.at("MappedEnd"));
}

TEST(MemoryModules, MapsTheOnlyModuleByItsArraysRange) {
    const std::string mapped = structure(
        19, 0x1300,
        std::string(8, '\xFF') + "\x00\x10\x01"s + std::string(8, '\0') + "\xFF\xFF\xFF\xFF\x03\x00\x00\x00"s,
        {});
    const std::string module = deviceFields("\x00\x40"s, "\xC0\x12"s);
    const std::string one = kArray + structure(17, 0x1100, module, kStrings) + mapped;
    TestMachine alone(dmi(one));
    EXPECT_EQ("0", collectOne(alone, kGroup).at("MappedStart"));
    EXPECT_EQ("17179869183", collectOne(alone, kGroup).at("MappedEnd"));
    TestMachine two(dmi(one + structure(17, 0x1101, module, kStrings)));
    EXPECT_EQ(0U, collectInstances(*two, kGroup)[0].count("MappedStart"));
}

TEST(MemoryModules, OrdersModulesByHandle) {
    TestMachine machine(dmi(structure(17, 0x1101, deviceFields("\x00\x00"s, "\x00\x00"s), {"second"}) +
                            structure(17, 0x1100, deviceFields("\x00\x00"s, "\x00\x00"s), {"first"})));
    EXPECT_EQ("first", collectInstances(*machine, kGroup).at(0).at("Locator"));
}

// Firmware makes structures of any length: whatever is cut off is absent, and nothing is read past the end.
TEST(MemoryModules, SurvivesStructuresOfEveryLength) {
    const std::string whole = deviceFields("\x00\x40"s, "\xC0\x12"s);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        TestMachine machine(dmi(structure(17, 1, whole.substr(0, length), kStrings)));
        EXPECT_EQ("0001", collectOne(machine, kGroup).at("Handle")) << length;
    }
}

TEST(MemoryModules, TakesTheDriversWordWithoutATable) {
    TestMachine machine(
        "sys/devices/system/edac/mc/mc0/dimm0/size: 8192\n"
        "sys/devices/system/edac/mc/mc0/dimm0/dimm_label: CPU_SrcID#0_MC#0_Chan#0_DIMM#0\n"
        "sys/devices/system/edac/mc/mc0/dimm0/dimm_mem_type: Registered-DDR4\n"
        "sys/devices/system/edac/mc/mc0/dimm0/dimm_edac_mode: S4ECD4ED\n");
    const Fields expected = {{"Populated", "true"},        {"Locator", "CPU_SrcID#0_MC#0_Chan#0_DIMM#0"},
                             {"SizeBytes", "8589934592"},  {"Type", "DDR4"},
                             {"TypeDetail", "Registered"}, {"Ecc", "true"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(MemoryModules, TakesTheDeviceTreesModules) {
    const std::string dimm = "proc/device-tree/xscom@3fc0000000000/mcbist@1/mcs@5010810/mca@0/dimm@d000/";
    TestMachine machine(dimm + "size = 00 00 40 00\n" + dimm +
                        "device_type = " + hexOf("memory-dimm-ddr4\0"s) + "\n" + dimm +
                        "ibm,loc-code = " + hexOf("UOPWR.BOS0026-Node0-DIMM8\0"s) + "\n");
    const Fields expected = {{"Populated", "true"},
                             {"Locator", "UOPWR.BOS0026-Node0-DIMM8"},
                             {"SizeBytes", "17179869184"},
                             {"Type", "DDR4"}};
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

}  // namespace
