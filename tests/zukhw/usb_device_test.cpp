#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

const std::string kBus = "sys/devices/pci0000:00/0000:00:14.0/usb1";

std::string device(const std::string& name, const std::string& path) {
    return "sys/bus/usb/devices/" + name + " -> ../../../" + path.substr(4) + "\n" + path +
           "/idVendor: 1d6b\n" + path + "/idProduct: 0002\n";
}

std::string interface(const std::string& name, const std::string& path, const char* code,
                      const char* driver) {
    return "sys/bus/usb/devices/" + name + " -> ../../../" + path.substr(4) + "\n" + path +
           "/bInterfaceClass: " + code + "\n" + path + "/bInterfaceSubClass: 01\n" + path +
           "/bInterfaceProtocol: 02\n" + path + "/driver -> ../drivers/" + driver + "\n";
}

// A keyboard on the third port of a hub.
const std::string kKeyboard = kBus + "/1-2/1-2.3";
const std::string kTree = device("usb1", kBus) + kBus + "/bDeviceClass: 09\n" + device("1-2", kBus + "/1-2") +
                          kBus + "/1-2/bDeviceClass: 09\n" + device("1-2.3", kKeyboard) + kKeyboard +
                          "/bDeviceClass: 00\n" +
                          interface("1-2.3:1.0", kKeyboard + "/1-2.3:1.0", "03", "usbhid") +
                          interface("1-2.3:1.1", kKeyboard + "/1-2.3:1.1", "03", "usbhid") +
                          interface("1-2.3:1.2", kKeyboard + "/1-2.3:1.2", "01", "snd-usb-audio") +
                          interface("1-0:1.0", kBus + "/1-0:1.0", "09", "hub");

Fields keyboard(const std::string& more) {
    TestMachine machine(kTree + more);
    return collectInstances(*machine, "USBDevice").at(2);
}

TEST(USBDevice, TellsTheKindsApart) {
    TestMachine machine(kTree);
    std::string kinds;
    for (const Fields& fields : collectInstances(*machine, "USBDevice")) {
        kinds += fields.at("PortPath") + ' ' + fields.at("Kind") + "; ";
    }
    EXPECT_EQ("usb1 RootHub; 1-2 Hub; 1-2.3 Device; ", kinds);
}

TEST(USBDevice, OrdersByBusThenPort) {
    std::string tree;
    for (const char* name : {"usb10", "usb2", "2-10", "2-9", "2-9.1", "10-1"})
        tree += device(name, "sys/x/" + std::string(name));
    TestMachine machine(tree);
    std::string order;
    for (const Fields& fields : collectInstances(*machine, "USBDevice")) order += fields.at("PortPath") + ' ';
    EXPECT_EQ("usb2 2-9 2-9.1 2-10 usb10 10-1 ", order);
}

TEST(USBDevice, TellsWhatItHangsOn) {
    TestMachine machine(kTree);
    const std::vector<Fields> devices = collectInstances(*machine, "USBDevice");
    EXPECT_EQ(0U, devices[0].count("ParentPort"));
    EXPECT_EQ("usb1", devices[1].at("ParentPort"));
    EXPECT_EQ("1-2", devices[2].at("ParentPort"));
    for (const Fields& fields : devices) EXPECT_EQ("0000:00:14.0", fields.at("ControllerAddress"));
}

TEST(USBDevice, GathersItsInterfaces) {
    const Fields fields = keyboard("");
    EXPECT_EQ("01; 03", fields.at("InterfaceClasses"));
    EXPECT_EQ("snd-usb-audio; usbhid", fields.at("Drivers"));
}

TEST(USBDevice, GivesARootHubItsInterface) {
    TestMachine machine(kTree);
    EXPECT_EQ("09", collectInstances(*machine, "USBDevice").at(0).at("InterfaceClasses"));
}

TEST(USBDevice, NamesTheInterfacesClassWhereTheDeviceHasNone) {
    const std::string ids =
        "usr/share/misc/usb.ids:\n\tC 01  Audio\n\tC 03  Human Interface Device\n\tC 09  Hub\n";
    TestMachine machine(kTree + ids);
    const std::vector<Fields> devices = collectInstances(*machine, "USBDevice");
    EXPECT_EQ("Hub", devices[1].at("ClassName"));
    EXPECT_EQ("Human Interface Device", devices[2].at("ClassName"));
}

TEST(USBDevice, PrefersTheNamesThatTheDeviceGivesItself) {
    const std::string ids = "usr/share/misc/usb.ids:\n\t1d6b  Linux Foundation\n\t\t0002  2.0 root hub\n";
    const Fields fields =
        keyboard(ids + kKeyboard + "/manufacturer: Maker\n" + kKeyboard + "/product: Keys 3\n");
    EXPECT_EQ("Maker", fields.at("Vendor"));
    EXPECT_EQ("Keys 3", fields.at("Product"));
    EXPECT_EQ("Linux Foundation", fields.at("VendorName"));
    EXPECT_EQ("2.0 root hub", fields.at("ProductName"));
    EXPECT_EQ("2.0 root hub", keyboard(ids).at("Product"));
}

struct Attribute {
    const char* file;
    const char* text;
    const char* field;
    const char* expected;  // empty: absent
};
const Attribute kAttributes[] = {
    {"busnum", "1", "BusNumber", "1"},
    {"devnum", "7", "DeviceNumber", "7"},
    {"bcdDevice", "1211", "Revision", "1211"},
    {"bDeviceSubClass", "00", "Subclass", "00"},
    {"bDeviceProtocol", "01", "Protocol", "01"},
    {"serial", "0123456789", "SerialNumber", ""},  // what a maker leaves in place of a number
    {"serial", "AB12", "SerialNumber", "AB12"},
    {"speed", "480", "SpeedMbps", "480"},
    {"speed", "1.5", "SpeedMbps", "1.5"},
    {"speed", "unknown", "SpeedMbps", ""},
    {"version", " 2.00", "UsbVersion", "2.00"},
    {"bMaxPower", "100mA", "MaxPowerMilliamps", "100"},
    {"bMaxPower", "0mA", "MaxPowerMilliamps", "0"},
    {"bMaxPower", "much", "MaxPowerMilliamps", ""},
    {"removable", "fixed", "Removable", "false"},
    {"removable", "unknown", "Removable", ""},
    {"bNumConfigurations", "1", "ConfigurationCount", "1"},
    {"speed", "-1", "SpeedMbps", ""},
};

TEST(USBDevice, ReadsAttributes) {
    for (const Attribute& row : kAttributes) {
        const Fields fields = keyboard(kKeyboard + '/' + row.file + ": " + row.text + '\n');
        EXPECT_EQ(row.expected, valueOf(fields, row.field)) << row.file << ' ' << row.text;
    }
}

}  // namespace
