// Names of devices: udev's hardware database, and the lists that stand in for it.
#include <gtest/gtest.h>

#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/hwdb.h"
#include "scanners/zukhw/ids_file.h"
#include "tests/zukhw/hwdb_file.h"
#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

const std::string kDatabase = makeHwdb({
    {"pci:v00008086*", {"ID_VENDOR_FROM_DATABASE", "Intel"}},
    {"pci:v00008086d00001533*", {"ID_MODEL_FROM_DATABASE", "I210"}},
    {"pci:v00008086d00001533sv000015D9sd00001533*", {"ID_MODEL_FROM_DATABASE", "I210 (X10 board)"}},
    {"pci:v*d*sv*sd*bc03*", {"ID_PCI_CLASS_FROM_DATABASE", "Display controller"}},
    {"pci:v*d*sv*sd*bc03sc00*", {"ID_PCI_SUBCLASS_FROM_DATABASE", "VGA compatible controller"}},
    {"usb:v046D*", {"ID_VENDOR_FROM_DATABASE", "Logitech"}},
    {"usb:v046DpC52B*", {"ID_MODEL_FROM_DATABASE", "Receiver"}},
    {"one?", {"X", "any character"}},
    {"cla[st]s", {"X", "a class"}},
});

std::string databaseTree(const std::string& bytes) {
    return "usr/lib/udev/hwdb.bin = " + hexOf(bytes) + "\n";
}

TEST(DeviceNames, ComeFromTheDatabase) {
    TestMachine machine(databaseTree(kDatabase));
    DeviceNames& names = machine->shared<DeviceNames>();
    EXPECT_EQ("Intel", names.pciVendor("8086"));
    EXPECT_EQ("I210", names.pciDevice("8086", "1533"));
    EXPECT_EQ("X10 board", names.pciSubsystem("8086", "1533", "15d9", "1533"));
    EXPECT_EQ("", names.pciSubsystem("8086", "1533", "15d9", "0000"));
    EXPECT_EQ("Display controller", names.pciClass("03"));
    EXPECT_EQ("VGA compatible controller", names.pciSubclass("03", "00"));
    EXPECT_EQ("Logitech", names.usbVendor("046d"));
    EXPECT_EQ("Receiver", names.usbProduct("046d", "c52b"));
    EXPECT_EQ("", names.pciVendor("1234"));
    EXPECT_EQ("", names.pciDevice("8086", "0000"));
    EXPECT_EQ("", names.pciVendor(""));
}

TEST(DeviceNames, ComeFromTheListsWithoutADatabase) {
    TestMachine machine(
        "usr/share/misc/pci.ids:\n\t# 8086  a comment\n\t8086  Intel Corporation\n\t\t1533  I210\n\t\t\t15d9 "
        "1533  X10\n"
        "\t\t1534  I211\n\t9999  Other\n\t\t1533  Not Intel's\n\tC 03  Display controller\n\t\t00  VGA\n"
        "usr/share/misc/usb.ids:\n\t046d  Logitech, Inc.\n\t\tc52b  Receiver\n");
    DeviceNames& names = machine->shared<DeviceNames>();
    EXPECT_EQ("Intel Corporation", names.pciVendor("8086"));
    EXPECT_EQ("I211", names.pciDevice("8086", "1534"));
    EXPECT_EQ("X10", names.pciSubsystem("8086", "1533", "15d9", "1533"));
    EXPECT_EQ("", names.pciSubsystem("8086", "1534", "15d9", "1533"));
    EXPECT_EQ("Not Intel's", names.pciDevice("9999", "1533"));
    EXPECT_EQ("", names.pciDevice("9999", "1534"));
    EXPECT_EQ("VGA", names.pciSubclass("03", "00"));
    EXPECT_EQ("Receiver", names.usbProduct("046d", "c52b"));
}

std::string nameIn(std::string_view text, std::string_view key) {
    return IdsFile(MemoryAccess(text)).name({key});
}
std::string nameIn(std::string_view text, std::string_view key, std::string_view second) {
    return IdsFile(MemoryAccess(text)).name({key, second});
}

TEST(IdsFile, EndsAnywhere) {
    EXPECT_EQ("last", nameIn("8086  last", "8086"));
    EXPECT_EQ("", nameIn("8086  last", "8086", "1533"));
    EXPECT_EQ("x", nameIn("8086  last\n\t1533  x", "8086", "1533"));
    EXPECT_EQ("", nameIn("8086", "8086"));
    EXPECT_EQ("", nameIn("", "8086"));
}

TEST(Hwdb, MatchesWholeNames) {
    TestMachine machine(databaseTree(kDatabase));
    Hwdb& database = machine->shared<Hwdb>();
    EXPECT_EQ((Hwdb::Properties{{"X", "any character"}}), database.lookup("one1"));
    EXPECT_TRUE(database.lookup("one").empty());
    EXPECT_TRUE(database.lookup("one12").empty());
    EXPECT_TRUE(database.lookup("class").empty());  // classes are not followed
    EXPECT_TRUE(database.lookup("").empty());
    EXPECT_TRUE(database.lookup(std::string(300, 'a')).empty());
}

TEST(Hwdb, SurvivesEveryCutOfItsFile) {
    for (std::size_t size = 0; size < kDatabase.size(); size += 7) {
        TestMachine machine(databaseTree(kDatabase.substr(0, size)));
        machine->shared<Hwdb>().lookup("pci:v00008086d00001533sv000015D9sd00001533bc03sc00i00");
    }
}

TEST(Hwdb, ReadsNothingOfAFileThatIsNone) {
    std::string other = kDatabase;
    other[0] = 'X';
    TestMachine wrong(databaseTree(other));
    EXPECT_FALSE(wrong->shared<Hwdb>().available());
    TestMachine missing("");
    EXPECT_FALSE(missing->shared<Hwdb>().available());
}

TEST(Hwdb, EndsOnATreeThatRunsInCircles) {
    // One node whose child, reached by any character, is itself.
    std::string bytes = makeHwdb({{"*", {"X", "1"}}});
    for (std::size_t at = 80; at + 16 <= bytes.size(); ++at) {
        if (bytes[at] != '*') continue;
        std::string root(bytes, 56, 8);
        bytes.replace(at + 8, 8, root);
    }
    TestMachine machine(databaseTree(bytes));
    EXPECT_TRUE(machine->shared<Hwdb>().lookup("abc").empty());
}

}  // namespace
