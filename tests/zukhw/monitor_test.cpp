#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scanners/zukhw/base64.h"
#include "tests/zukhw/edid_block.h"
#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;
using namespace std::string_literals;

const std::string kBlock =
    edidBlock({{8, "\x10\xAC"s},
               {21, "\x34\x1D"s},
               {54, "\x02\x3A\x80\x18\x71\x38\x2D\x40\x58\x2C\x45\x00\x08\x22\x21\x00\x00\x1E"s},
               {72, edidTextDescriptor(0xFC, "U2412M")},
               {90, edidTextDescriptor(0xFF, "0000000000000")}});

std::string connector(const std::string& name, const std::string& edid) {
    const std::string path = "sys/class/drm/" + name;
    return path + "/status: connected\n" + path + "/edid = " + hexOf(edid) + "\n";
}

Fields monitor(const std::string& tree) {
    TestMachine machine(tree);
    return collectOne(machine, "Monitor");
}

TEST(Monitor, ReportsADisplay) {
    const Fields fields = monitor(connector("card0-HDMI-A-1", kBlock));
    EXPECT_THAT(fields, IsSupersetOf(Fields{{"Connector", "HDMI-A-1"},
                                            {"ManufacturerId", "DEL"},
                                            {"Model", "U2412M"},
                                            {"PreferredResolution", "1920x1080"},
                                            {"PreferredRefreshMilliHertz", "60000"},
                                            {"DiagonalMillimetres", "595"},
                                            {"ChecksumValid", "true"}}));
    EXPECT_EQ(base64(kBlock), fields.at("Edid"));
}

TEST(Monitor, NamesAMakerWithoutAHardwareDatabase) {
    EXPECT_EQ("Dell Inc.", monitor(connector("card0-DP-1", kBlock)).at("Manufacturer"));
}

TEST(Monitor, LeavesOutASerialNumberOfZeros) {
    EXPECT_EQ(0U, monitor(connector("card0-DP-1", kBlock)).count("SerialNumber"));
}

TEST(Monitor, ListsEachModeOnceInOrder) {
    const Fields fields = monitor(connector("card0-DP-1", kBlock) +
                                  "sys/class/drm/card0-DP-1/modes:\n\t1920x1080\n\t1280x720\n\t1920x1080\n");
    EXPECT_EQ("1920x1080; 1280x720", fields.at("Modes"));
}

TEST(Monitor, KnowsBuiltInDisplays) {
    EXPECT_EQ("true", monitor(connector("card0-eDP-1", kBlock)).at("BuiltIn"));
    EXPECT_EQ("true", monitor(connector("card0-LVDS-1", kBlock)).at("BuiltIn"));
    EXPECT_EQ("true", monitor(connector("card0-DSI-1", kBlock)).at("BuiltIn"));
    EXPECT_EQ("false", monitor(connector("card0-DP-1", kBlock)).at("BuiltIn"));
}

TEST(Monitor, TellsWhetherItIsInUse) {
    const std::string tree = connector("card0-DP-1", kBlock) + "sys/class/drm/card0-DP-1/enabled: ";
    EXPECT_EQ("true", monitor(tree + "enabled\n").at("Enabled"));
    EXPECT_EQ("false", monitor(tree + "disabled\n").at("Enabled"));
}

TEST(Monitor, KeepsEqualDisplaysApart) {
    TestMachine machine(connector("card0-DP-10", kBlock) + connector("card0-DP-2", kBlock) +
                        connector("card1-DP-1", kBlock));
    std::string order;
    for (const Fields& fields : collectInstances(*machine, "Monitor")) order += fields.at("Connector") + ' ';
    EXPECT_EQ("DP-2 DP-10 DP-1 ", order);
}

TEST(Monitor, HasNoInstanceForADisconnectedOne) {
    TestMachine machine("sys/class/drm/card0-DP-1/status: disconnected\nsys/class/drm/card0-DP-1/edid = " +
                        hexOf(kBlock) + "\n");
    EXPECT_EQ("", collectXml(*machine, "Monitor"));
}

TEST(Monitor, CountsBytesThatAreNoEdid) {
    TestMachine machine(connector("card0-DP-1", kBlock.substr(0, 100)));
    EXPECT_EQ("", collectXml(*machine, "Monitor"));
    EXPECT_EQ(std::vector<std::string>{"/sys/class/drm/card0-DP-1/edid@0"},
              machine->sources().malformedItems());
}

TEST(Monitor, CountsNoMissingEdidAsBroken) {
    TestMachine machine("sys/class/drm/card0-DP-1/status: connected\nsys/class/drm/card0-DP-1/edid:\n");
    EXPECT_EQ("", collectXml(*machine, "Monitor"));
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(Base64, EncodesByTheStandardsExamples) {
    const std::pair<const char*, const char*> kCases[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
    };
    for (const auto& [bytes, text] : kCases) EXPECT_EQ(text, base64(bytes)) << bytes;
}

}  // namespace
