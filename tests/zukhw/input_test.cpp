#include <gtest/gtest.h>

#include "scanners/zukhw/input_bits.h"
#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

TEST(InputBits, CountsWordsFromTheLast) {
    const InputBits wide("80000000000000 e0b0ffdf01cfffff fffffffffffffffe", 64);
    EXPECT_FALSE(wide.has(0));
    EXPECT_TRUE(wide.has(1));
    EXPECT_TRUE(wide.has(64));
    EXPECT_TRUE(wide.has(183));
    EXPECT_FALSE(wide.has(192));
    const InputBits narrow("1 0 80000000", 32);
    EXPECT_TRUE(narrow.has(31));
    EXPECT_FALSE(narrow.has(32));
    EXPECT_TRUE(narrow.has(64));
}

TEST(InputBits, HasNothingInTextThatIsNoBitMap) {
    EXPECT_EQ(0U, InputBits("much ado", 64).count(0, 127));
    EXPECT_EQ(0U, InputBits("ffffffffffffffffff", 64).count(0, 127));
    std::string endless;
    for (int i = 0; i < 1000; ++i) endless += "ff ";
    EXPECT_EQ(0U, InputBits(endless, 64).count(0, 127));
}

std::string device(const std::string& number, const std::string& event) {
    return "sys/class/input/input" + number + "/uevent:\n" + event;
}

// What devices that everybody has can do.
const std::string kMouse = "\tPRODUCT=3/46d/c077/111\n\tPROP=0\n\tEV=17\n\tKEY=ff0000 0 0 0 0\n\tREL=143\n";
const std::string kStick = "\tPRODUCT=11/2/a/0\n\tPROP=21\n\tEV=7\n\tKEY=70000 0 0 0 0\n\tREL=3\n";
const std::string kTouchpad =
    "\tPRODUCT=11/2/7/1b1\n\tPROP=5\n\tEV=b\n\tKEY=e520 10000 0 0 0 0\n\tABS=660800011000003\n";
const std::string kTouchscreen =
    "\tPRODUCT=18/4f3/22/100\n\tPROP=2\n\tEV=b\n\tKEY=400 0 0 0 0 0\n\tABS=260800000000003\n";
const std::string kTablet =
    "\tPRODUCT=3/56a/357/110\n\tPROP=1\n\tEV=1b\n\tKEY=1c03 0 0 0 0 0\n\tABS=1000d000003\n";
const std::string kPad =
    "\tPRODUCT=3/45e/28e/114\n\tPROP=0\n\tEV=20000b\n\tKEY=7cdb000000000000 0 0 0 0\n\tABS=3003f\n";
const std::string kVirtualMouse =
    "\tPRODUCT=3/627/1/1\n\tPROP=0\n\tEV=1f\n\tKEY=70000 0 0 0 0\n\tREL=900\n\tABS=3\n";
const std::string kKeyboard =
    "\tPRODUCT=11/1/1/ab41\n\tNAME=\"AT Keyboard\"\n\tPHYS=\"isa0060/serio0/input0\"\n\tPROP=0\n\tEV=120013\n"
    "\tKEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n\tLED=7\n";
const std::string kPowerButton = "\tPRODUCT=19/0/1/0\n\tPROP=0\n\tEV=3\n\tKEY=10000000000000 0\n";

struct KindCase {
    const std::string& event;
    const char* kind;  // empty: no pointing device
};

TEST(PointingDevice, TellsKindsByWhatTheyCanDo) {
    const KindCase kCases[] = {
        {kMouse, "Mouse"},   {kStick, "TrackPoint"}, {kTouchpad, "Touchpad"},  {kTouchscreen, "Touchscreen"},
        {kTablet, "Tablet"}, {kPad, "Joystick"},     {kVirtualMouse, "Mouse"}, {kKeyboard, ""},
        {kPowerButton, ""},
    };
    for (const KindCase& row : kCases) {
        TestMachine machine(device("0", row.event));
        const std::vector<Fields> found = collectInstances(*machine, "PointingDevice");
        EXPECT_EQ(row.kind, found.empty() ? "" : found[0].at("Kind")) << row.event;
    }
}

TEST(PointingDevice, BelievesUdevMoreThanAbilities) {
    TestMachine machine(device("4", kMouse) +
                        "run/udev/data/+input:input4:\n\tE:ID_INPUT=1\n\tE:ID_INPUT_MOUSE=1\n"
                        "\tE:ID_INPUT_POINTINGSTICK=1\n");
    EXPECT_EQ("TrackPoint", collectOne(machine, "PointingDevice").at("Kind"));
}

TEST(PointingDevice, FindsUdevsKnowledgeInARecordedEventToo) {
    TestMachine machine(device("4", kMouse + "\tID_INPUT=1\n\tID_INPUT_TOUCHPAD=1\n"));
    EXPECT_EQ("Touchpad", collectOne(machine, "PointingDevice").at("Kind"));
}

TEST(PointingDevice, ReportsAMouse) {
    TestMachine machine(
        "sys/class/input/input3 -> ../../devices/usb1/1-2/1-2:1.0/input/input3\n"
        "sys/devices/usb1/1-2/1-2:1.0/driver -> ../../../../bus/usb/drivers/usbhid\n"
        "usr/share/misc/usb.ids:\n\t046d  Logitech, Inc.\n"
        "sys/devices/usb1/1-2/1-2:1.0/input/input3/uevent:\n\tNAME=\"A \"Good\" Mouse\"\n"
        "\tPHYS=\"usb-0000:00:14.0-2/input0\"\n\tUNIQ=\"AB12\"\n" +
        kMouse);
    EXPECT_EQ((Fields{{"Name", "A \"Good\" Mouse"},
                      {"Vendor", "Logitech, Inc."},
                      {"VendorId", "046d"},
                      {"ProductId", "c077"},
                      {"VersionId", "0111"},
                      {"Bus", "USB"},
                      {"SerialNumber", "AB12"},
                      {"PhysicalPath", "usb-0000:00:14.0-2/input0"},
                      {"Driver", "usbhid"},
                      {"Kind", "Mouse"},
                      {"Buttons", "8"},
                      {"HasWheel", "true"}}),
              collectOne(machine, "PointingDevice"));
}

TEST(PointingDevice, ReadsAttributesWhereThereIsNoEvent) {
    TestMachine machine(
        "sys/class/input/input1/name: Old Mouse\n"
        "sys/class/input/input1/id/bustype: 0011\nsys/class/input/input1/id/vendor: 0002\n"
        "sys/class/input/input1/id/product: 0001\nsys/class/input/input1/id/version: 0000\n"
        "sys/class/input/input1/capabilities/ev: 7\nsys/class/input/input1/capabilities/key: 70000 0 0 0 0\n"
        "sys/class/input/input1/capabilities/rel: 3\n");
    const Fields fields = collectOne(machine, "PointingDevice");
    EXPECT_EQ("Old Mouse", fields.at("Name"));
    EXPECT_EQ("PS/2", fields.at("Bus"));
    EXPECT_EQ(0U, fields.count("VersionId"));
    EXPECT_EQ("3", fields.at("Buttons"));
}

const std::string kTable =
    "proc/bus/input/devices:\n"
    "\tI: Bus=0003 Vendor=046d Product=c077 Version=0111\n"
    "\tN: Name=\"USB Mouse\"\n\tP: Phys=usb-1/input0\n\tS: Sysfs=/devices/usb1/input/input3\n\tU: Uniq=\n"
    "\tH: Handlers=mouse0 event3\n\tB: PROP=0\n\tB: EV=17\n\tB: KEY=ff0000 0 0 0 0\n\tB: REL=143\n\t\n"
    "\tI: Bus=0011 Vendor=0001 Product=0001 Version=ab41\n"
    "\tN: Name=\"AT Keyboard\"\n\tP: Phys=isa0060/serio0/input0\n\tS: "
    "Sysfs=/devices/platform/i8042/input/input0\n"
    "\tB: EV=120013\n\tB: KEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n\tB: LED=7\n\t\n";

TEST(PointingDevice, ReadsTheTableOfAllDevices) {
    TestMachine machine(kTable);
    const Fields fields = collectOne(machine, "PointingDevice");
    EXPECT_EQ("USB Mouse", fields.at("Name"));
    EXPECT_EQ("c077", fields.at("ProductId"));
    EXPECT_EQ("usb-1/input0", fields.at("PhysicalPath"));
    EXPECT_EQ("8", fields.at("Buttons"));
}

TEST(PointingDevice, OrdersByTheKernelsNumbers) {
    TestMachine machine(device("10", kTouchpad) + device("9", kMouse));
    const std::vector<Fields> found = collectInstances(*machine, "PointingDevice");
    ASSERT_EQ(2U, found.size());
    EXPECT_EQ("Mouse", found[0].at("Kind"));
}

TEST(PointingDevice, TakesTheFirmwaresWordWhereTheKernelHasNone) {
    const std::string pointing = structure(21, 1, "\x07\x04\x02"s, {});
    TestMachine machine("sys/firmware/dmi/tables/DMI = " + hexOf(pointing) + "\n");
    EXPECT_EQ((Fields{{"Kind", "Touchpad"}, {"Interface", "PS/2"}, {"Buttons", "2"}}),
              collectOne(machine, "PointingDevice"));
}

TEST(Keyboard, ReportsAKeyboard) {
    TestMachine machine(device("0", kKeyboard));
    EXPECT_EQ((Fields{{"Name", "AT Keyboard"},
                      {"VendorId", "0001"},
                      {"ProductId", "0001"},
                      {"VersionId", "ab41"},
                      {"Bus", "PS/2"},
                      {"PhysicalPath", "isa0060/serio0/input0"},
                      {"HasNumericPad", "true"},
                      {"FunctionKeys", "15"},
                      {"HasLeds", "true"}}),
              collectOne(machine, "Keyboard"));
}

TEST(Keyboard, ReadsTheTableOfAllDevices) {
    TestMachine machine(kTable);
    EXPECT_EQ("AT Keyboard", collectOne(machine, "Keyboard").at("Name"));
}

TEST(Keyboard, IsNoButton) {
    TestMachine machine(device("0", kPowerButton) + device("1", kMouse));
    EXPECT_EQ("", collectXml(*machine, "Keyboard"));
}

TEST(Keyboard, ReadsBitMapsOfNarrowWords) {
    const std::string narrow =
        "\tPRODUCT=11/1/1/ab41\n\tEV=120013\n"
        "\tKEY=4 2000000 3803078 f800d001 feffffdf ffefffff ffffffff fffffffe\n";
    TestMachine machine(device("0", narrow) +
                        "sbin/init = 7f 45 4c 46 01 01 01 00 00 00 00 00 00 00 00 00 02 00 28 00\n");
    EXPECT_EQ("true", collectOne(machine, "Keyboard").at("HasNumericPad"));
}

struct LayoutCase {
    const char* tree;
    const char* layout;
    const char* variant;
    const char* model;
};

TEST(Keyboard, ReadsItsLayoutFromWhereItIsSet) {
    const LayoutCase kCases[] = {
        {"etc/default/keyboard:\n\tXKBMODEL=\"pc105\"\n\tXKBLAYOUT=\"us,de\"\n\tXKBVARIANT=\"intl\"\n",
         "us,de", "intl", "pc105"},
        {"etc/vconsole.conf:\n\tKEYMAP=de-latin1\n\tXKBLAYOUT=de\n\tXKBMODEL=pc104\n", "de", "", "pc104"},
        {"etc/vconsole.conf: KEYMAP=\"fr\"\n"
         "etc/X11/xorg.conf.d/00-keyboard.conf:\n\tSection \"InputClass\"\n\t  Option \"XkbLayout\" \"ch\"\n"
         "\t  Option \"XkbVariant\" \"fr\"\n\tEndSection\n",
         "ch", "fr", ""},
        {"etc/vconsole.conf: KEYMAP=\"fr\"\n", "fr", "", ""},
        {"", "", "", ""},
    };
    for (const LayoutCase& row : kCases) {
        TestMachine machine(device("0", kKeyboard) + row.tree);
        Fields fields = collectOne(machine, "Keyboard");
        EXPECT_EQ(row.layout, fields["Layout"]) << row.tree;
        EXPECT_EQ(row.variant, fields["Variant"]) << row.tree;
        EXPECT_EQ(row.model, fields["XkbModel"]) << row.tree;
    }
}

}  // namespace
