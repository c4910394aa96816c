#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;
using namespace std::string_literals;

constexpr char kGroup[] = "ComponentID";

std::string dmi(const std::string& table) {
    return "sys/firmware/dmi/tables/DMI = " + hexOf(table) + "\n";
}

const std::string kUuid = "\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF"s;

TEST(ComponentID, TellsWhatTheTableTells) {
    TestMachine machine(
        dmi(structure(1, 1, "\x01\x02\x03\x04"s + kUuid + "\x06\x05\x06"s,
                      {"Maker", "Model", "1.0", "S-1", "SKU-1", "Family"}) +
            structure(2, 2, "\x01\x02\x03\x04\x05"s, {"Boards", "B-1", "2.0", "BS-1", "BA-1"}) +
            structure(3, 3, "\x00\x03\x00\x01\x02"s, {"CS-1", "A-1"})) +
        "etc/machine-id: 0123456789abcdef0123456789abcdef\netc/hostid = 78 56 34 12\n"
        "proc/sys/kernel/hostname: box\n");
    const Fields expected = {
        {"Manufacturer", "Maker"},
        {"Model", "Model"},
        {"ModelVersion", "1.0"},
        {"Family", "Family"},
        {"Sku", "SKU-1"},
        {"SerialNumber", "S-1"},
        {"SerialNumberSource", "System"},
        {"Uuid", "00112233-4455-6677-8899-aabbccddeeff"},
        {"AssetTag", "A-1"},
        {"BoardManufacturer", "Boards"},
        {"BoardModel", "B-1"},
        {"BoardVersion", "2.0"},
        {"BoardSerialNumber", "BS-1"},
        {"ChassisSerialNumber", "CS-1"},
        {"MachineId", "0123456789abcdef0123456789abcdef"},
        {"HostId", "12345678"},
        {"HostName", "box"},
        {"Virtual", "false"},
        {"IdSource", "SMBIOS"},
    };
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(ComponentID, TakesTheBoardForASystemWithoutName) {
    TestMachine machine(
        "sys/class/dmi/id/product_name: System Product Name\nsys/class/dmi/id/board_name: B-1\n");
    EXPECT_EQ("B-1", collectOne(machine, kGroup).at("Model"));
}

TEST(ComponentID, TakesTheFirstSerialNumberThatIsOne) {
    const std::string system = "sys/class/dmi/id/product_serial: To be filled by O.E.M.\n";
    TestMachine chassis(system +
                        "sys/class/dmi/id/chassis_serial: CS-1\nsys/class/dmi/id/board_serial: BS-1\n");
    EXPECT_EQ("CS-1", collectOne(chassis, kGroup).at("SerialNumber"));
    EXPECT_EQ("Chassis", collectOne(chassis, kGroup).at("SerialNumberSource"));
    TestMachine board(system + "sys/class/dmi/id/board_serial: BS-1\n");
    EXPECT_EQ("Board", collectOne(board, kGroup).at("SerialNumberSource"));
    TestMachine soc("sys/devices/soc0/serial_number: 1234abcd\n");
    EXPECT_EQ("Soc", collectOne(soc, kGroup).at("SerialNumberSource"));
}

TEST(ComponentID, ReportsAUuidInLowerCase) {
    TestMachine machine("sys/class/dmi/id/product_uuid: 83340CA8-CB49-4474-8C29-D2088CA84DD9\n");
    EXPECT_EQ("83340ca8-cb49-4474-8c29-d2088ca84dd9", collectOne(machine, kGroup).at("Uuid"));
}

TEST(ComponentID, DoesNotReportWhatIsNoUuid) {
    for (const char* text :
         {"4", "83340ca8-cb49-4474-8c29-d2088ca84dd", "83340ca8-cb49-4474-8c29-d2088ca84ddg",
          "83340ca8-cb49-4474-8c29_d2088ca84dd9"}) {
        TestMachine machine("sys/class/dmi/id/product_uuid: "s + text +
                            "\nsys/class/dmi/id/sys_vendor: Maker\n");
        EXPECT_EQ(0U, collectOne(machine, kGroup).count("Uuid")) << text;
    }
}

TEST(ComponentID, DoesNotReportSharedUuids) {
    for (const char* uuid : {"00000000-0000-0000-0000-000000000000", "FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF",
                             "03000200-0400-0500-0006-000700080009"}) {
        TestMachine machine("sys/class/dmi/id/product_uuid: "s + uuid +
                            "\nsys/class/dmi/id/sys_vendor: Maker\n");
        EXPECT_EQ(0U, collectOne(machine, kGroup).count("Uuid")) << uuid;
    }
}

TEST(ComponentID, TakesTheDeviceTree) {
    TestMachine machine("sys/firmware/devicetree/base/model = " + hexOf("Maker,Board 4\0"s) + "\n" +
                        "sys/firmware/devicetree/base/serial-number = " + hexOf("10000000abcdef01\0"s) +
                        "\n");
    EXPECT_THAT(collectOne(machine, kGroup), IsSupersetOf(Fields{{"Manufacturer", "Maker"},
                                                                 {"Model", "Maker,Board 4"},
                                                                 {"SerialNumber", "10000000abcdef01"},
                                                                 {"IdSource", "DeviceTree"},
                                                                 {"FirmwareType", "DeviceTree"}}));
}

TEST(ComponentID, TakesWhatS390Tells) {
    TestMachine machine(
        "proc/sysinfo:\n\tManufacturer:         IBM\n\tType:                 2964\n"
        "\tModel:                701              N63\n\tSequence Code:        00000000000DFEE7\n");
    const Fields fields = collectOne(machine, kGroup);
    EXPECT_EQ("IBM", fields.at("Manufacturer"));
    EXPECT_EQ("2964-701", fields.at("Model"));
    EXPECT_EQ("00000000000DFEE7", fields.at("SerialNumber"));
    EXPECT_EQ("SysInfo", fields.at("IdSource"));
}

}  // namespace
