// Serial ports, parallel ports and modems.
#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

const std::string kUart =
    "sys/class/tty/ttyS0 -> ../../devices/pnp0/00:03/00:03:0/00:03:0.0/tty/ttyS0\n"
    "sys/devices/pnp0/00:03/driver -> ../../../bus/pnp/drivers/serial\n"
    "sys/devices/pnp0/00:03/00:03:0/driver -> ../../../../bus/serial-base/drivers/ctrl\n"
    "sys/bus/pnp/devices/00:03/id: PNP0501\n"
    "sys/devices/pnp0/00:03/00:03:0/00:03:0.0/tty/ttyS0/type: 4\n"
    "sys/devices/pnp0/00:03/00:03:0/00:03:0.0/tty/ttyS0/port: 0x3F8\n"
    "sys/devices/pnp0/00:03/00:03:0/00:03:0.0/tty/ttyS0/iomem_base: 0x0\n"
    "sys/devices/pnp0/00:03/00:03:0/00:03:0.0/tty/ttyS0/irq: 4\n"
    "sys/devices/pnp0/00:03/00:03:0/00:03:0.0/tty/ttyS0/uartclk: 1843200\n"
    "sys/devices/pnp0/00:03/00:03:0/00:03:0.0/tty/ttyS0/xmit_fifo_size: 16\n";

TEST(SerialPort, ReportsAUart) {
    TestMachine machine(kUart + "sys/class/tty/console/active: tty0 ttyS0\n");
    EXPECT_EQ((Fields{{"DeviceName", "ttyS0"},
                      {"Kind", "Uart"},
                      {"Chip", "16550A"},
                      {"IoPort", "03f8"},
                      {"Irq", "4"},
                      {"MaxBaud", "115200"},
                      {"FifoBytes", "16"},
                      {"Driver", "serial"},
                      {"BusAddress", "00:03"},
                      {"PnpId", "PNP0501"},
                      {"Console", "true"}}),
              collectOne(machine, "SerialPort"));
}

TEST(SerialPort, LeavesOutPortsWithoutHardware) {
    TestMachine machine(
        "sys/class/tty/tty1 -> ../../devices/virtual/tty/tty1\n"
        "sys/devices/virtual/tty/tty1/dev: 4:1\n"
        "sys/class/tty/ttyS1 -> ../../devices/platform/serial8250/tty/ttyS1\n"
        "sys/devices/platform/serial8250/tty/ttyS1/type: 0\n"
        "sys/devices/platform/serial8250/tty/ttyS1/port: 0x2F8\n"
        "sys/class/tty/ttyS2 -> ../../devices/platform/serial8250/tty/ttyS2\n"
        "sys/devices/platform/serial8250/tty/ttyS2/type: 4\n"
        "sys/devices/platform/serial8250/tty/ttyS2/port: 0x0\n");
    EXPECT_EQ("", collectXml(*machine, "SerialPort"));
}

TEST(SerialPort, AsksOneConsoleForAll) {
    TestMachine machine(
        "sys/class/tty/tty1 -> ../../devices/virtual/tty/tty1\n"
        "sys/devices/virtual/tty/tty1/dev: 4:1\n"
        "sys/class/tty/tty2/type: 4\n"
        "sys/class/tty/tty2/port: 0x2F8\n"
        "sys/class/tty/ttyS2/type: 4\n"
        "sys/class/tty/ttyS2/port: 0x3E8\n");
    EXPECT_EQ("ttyS2", collectOne(machine, "SerialPort").at("DeviceName"));
}

// A kernel without consoles leaves their names to others.
TEST(SerialPort, AsksEachPortThatIsNamedLikeAConsole) {
    TestMachine machine(
        "sys/class/tty/tty1/type: 4\n"
        "sys/class/tty/tty1/port: 0x2F8\n"
        "sys/class/tty/tty2/type: 4\n"
        "sys/class/tty/tty2/port: 0x3E8\n");
    EXPECT_EQ(2U, collectInstances(*machine, "SerialPort").size());
}

TEST(SerialPort, ReportsAUartOfAnotherFamily) {
    TestMachine machine(
        "sys/class/tty/ttyAMA0 -> ../../devices/platform/9000000.pl011/tty/ttyAMA0\n"
        "sys/devices/platform/9000000.pl011/tty/ttyAMA0/type: 32\n"
        "sys/devices/platform/9000000.pl011/tty/ttyAMA0/iomem_base: 0x9000000\n");
    const Fields fields = collectOne(machine, "SerialPort");
    EXPECT_EQ("Platform", fields.at("Kind"));
    EXPECT_EQ("09000000", fields.at("MemoryAddress"));
    EXPECT_EQ("9000000.pl011", fields.at("BusAddress"));
    EXPECT_EQ(0U, fields.count("Chip"));
}

const std::string kUsbPort = "sys/devices/pci0000:00/0000:00:14.0/usb1/1-3";
const std::string kUsb = "sys/bus/usb/devices/1-3 -> ../../../devices/pci0000:00/0000:00:14.0/usb1/1-3\n" +
                         kUsbPort + "/idVendor: 0403\n" + kUsbPort + "/idProduct: 6001\n" + kUsbPort +
                         "/serial: A50285BI\n" + kUsbPort + "/product: FT232R USB UART\n";

TEST(SerialPort, ReportsAUsbAdapter) {
    TestMachine machine(kUsb +
                        "sys/class/tty/ttyUSB0 -> "
                        "../../devices/pci0000:00/0000:00:14.0/usb1/1-3/1-3:1.0/ttyUSB0/tty/ttyUSB0\n" +
                        kUsbPort + "/1-3:1.0/ttyUSB0/tty/ttyUSB0/dev: 188:0\n" + kUsbPort +
                        "/1-3:1.0/ttyUSB0/driver -> ../../../../../../../bus/usb-serial/drivers/ftdi_sio\n");
    EXPECT_EQ((Fields{{"DeviceName", "ttyUSB0"},
                      {"Kind", "UsbSerial"},
                      {"Driver", "ftdi_sio"},
                      {"BusAddress", "1-3"},
                      {"VendorId", "0403"},
                      {"ProductId", "6001"},
                      {"SerialNumber", "A50285BI"},
                      {"Model", "FT232R USB UART"},
                      {"Console", "false"}}),
              collectOne(machine, "SerialPort"));
}

// COM 1 outside, J4 inside; then a parallel one.
const std::string kConnectors = "sys/firmware/dmi/tables/DMI = " +
                                hexOf(structure(8, 1, "\x01\x00\x02\x08\x09"s, {"J4", "COM 1"}) +
                                      structure(8, 2, "\x01\x00\x02\x05\x05"s, {"J5", "LPT 1"})) +
                                "\n";

TEST(SerialPort, ReportsAUsbAdapterOfACopyWithoutTheClassesLinks) {
    TestMachine machine(kUsb + kUsbPort + "/1-3:1.0/ttyUSB0/x: \n" +
                        "sys/class/tty/ttyUSB0/device -> "
                        "../../../devices/pci0000:00/0000:00:14.0/usb1/1-3/1-3:1.0/ttyUSB0\n");
    EXPECT_EQ("UsbSerial", collectOne(machine, "SerialPort").at("Kind"));
}

TEST(SerialPort, TakesTheFirmwaresConnectorsWhereThereIsNoPort) {
    TestMachine machine(kConnectors);
    EXPECT_EQ(
        (Fields{{"Kind", "Connector"}, {"InternalDesignation", "J4"}, {"ExternalDesignation", "COM 1"}}),
        collectOne(machine, "SerialPort"));
    TestMachine withPort(kConnectors + kUart);
    EXPECT_EQ("Uart", collectOne(withPort, "SerialPort").at("Kind"));
}

const std::string kParallel =
    "proc/sys/dev/parport/default/spintime: 500\n"
    "proc/sys/dev/parport/parport0/base-addr: 888\t1912\n"
    "proc/sys/dev/parport/parport0/irq: 7\nproc/sys/dev/parport/parport0/dma: none\n"
    "proc/sys/dev/parport/parport0/modes: PCSPP,TRISTATE,EPP\n"
    "proc/sys/dev/parport/parport0/autoprobe:\n\tCLASS:PRINTER;\n\tMODEL:LaserJet "
    "4;\n\tMANUFACTURER:Hewlett-Packard;\n";

TEST(ParallelPort, ReportsAPort) {
    TestMachine machine(kParallel + kConnectors);
    EXPECT_EQ((Fields{{"DeviceName", "parport0"},
                      {"IoPort", "0378"},
                      {"Irq", "7"},
                      {"Modes", "PCSPP; TRISTATE; EPP"},
                      {"AttachedDevice", "Hewlett-Packard LaserJet 4"}}),
              collectOne(machine, "ParallelPort"));
}

TEST(ParallelPort, ReportsEachPortOnce) {
    TestMachine machine(kParallel +
                        "sys/bus/parport/devices/parport0/uevent:\nsys/class/ppdev/parport0/dev: 99:0\n");
    EXPECT_EQ("parport0", collectOne(machine, "ParallelPort").at("DeviceName"));
}

TEST(ParallelPort, FindsAPortThatNoDriverTookUp) {
    TestMachine machine(
        "sys/bus/pnp/devices/00:05/id: PNP0400\n"
        "sys/bus/pnp/devices/00:05/resources:\n\tstate = active\n\tio 0x378-0x37f\n\tirq 7\n"
        "sys/bus/pnp/devices/00:06/id: PNP0501\n");
    EXPECT_EQ((Fields{{"DeviceName", "00:05"}, {"IoPort", "0378"}, {"Irq", "7"}}),
              collectOne(machine, "ParallelPort"));
}

TEST(ParallelPort, TakesTheFirmwaresConnectorsLast) {
    TestMachine machine(kConnectors);
    EXPECT_EQ((Fields{{"Connector", "LPT 1"}}), collectOne(machine, "ParallelPort"));
}

std::string interface(const std::string& number, const std::string& code, const std::string& driver) {
    const std::string path = kUsbPort + "/1-3:1." + number;
    return "sys/bus/usb/devices/1-3:1." + number + " -> ../../../" + path.substr(4) + "\n" + path +
           "/bInterfaceClass: " + code.substr(0, 2) + "\n" + path +
           "/bInterfaceSubClass: " + code.substr(2, 2) + "\n" + path +
           "/bInterfaceProtocol: " + code.substr(4) + "\n" + path + "/driver -> ../drivers/" + driver + "\n";
}

TEST(Modem, ReportsAUsbModemOnceWithAllItsPorts) {
    TestMachine machine(kUsb + interface("0", "ff0000", "option") + kUsbPort + "/1-3:1.0/ttyUSB2/tty/x: \n" +
                        interface("1", "020e00", "cdc_mbim") + kUsbPort +
                        "/1-3:1.1/usbmisc/cdc-wdm0/dev: 1:1\n" + kUsbPort + "/1-3:1.1/net/wwan0/mtu: 1500\n");
    EXPECT_EQ((Fields{{"Name", "FT232R USB UART"},
                      {"Model", "FT232R USB UART"},
                      {"VendorId", "0403"},
                      {"ProductId", "6001"},
                      {"SerialNumber", "A50285BI"},
                      {"Kind", "Usb"},
                      {"Ports", "cdc-wdm0; ttyUSB2"},
                      {"NetworkInterface", "wwan0"},
                      {"Driver", "option"},
                      {"BusAddress", "1-3"}}),
              collectOne(machine, "Modem"));
}

TEST(Modem, KnowsModemsByTheirInterfaces) {
    const std::pair<const char*, bool> kCases[] = {
        {"020201", true}, {"020e00", true}, {"020600", false}, {"030101", false}, {"ff0000", false}};
    for (const auto& [code, expected] : kCases) {
        TestMachine machine(kUsb + interface("0", code, "none"));
        EXPECT_EQ(expected ? 1U : 0U, collectInstances(*machine, "Modem").size()) << code;
    }
}

TEST(Modem, ReportsAPciModem) {
    TestMachine machine(
        "sys/bus/pci/devices/0000:02:00.0/uevent:\n\tDRIVER=serial\n\tPCI_CLASS=70300\n\tPCI_ID=12B9:1008\n");
    EXPECT_EQ((Fields{{"Name", "0000:02:00.0"},
                      {"VendorId", "12b9"},
                      {"ProductId", "1008"},
                      {"Kind", "Pci"},
                      {"Driver", "serial"},
                      {"BusAddress", "0000:02:00.0"}}),
              collectOne(machine, "Modem"));
}

TEST(Modem, ReportsAWirelessWideAreaDevice) {
    TestMachine machine(
        "sys/bus/pci/devices/0000:03:00.0/"
        "uevent:\n\tDRIVER=mhi-pci-generic\n\tPCI_CLASS=FF0000\n\tPCI_ID=17CB:0308\n"
        "sys/class/wwan/wwan1 -> ../../devices/pci0000:00/0000:00:1c.0/0000:03:00.0/mhi0/wwan/wwan1\n"
        "sys/devices/pci0000:00/0000:00:1c.0/0000:03:00.0/mhi0/wwan/wwan1/net/wwan1net/mtu: 1500\n"
        "sys/class/wwan/wwan1at0/type: AT\nsys/class/wwan/wwan1qmi0/type: "
        "QMI\nsys/class/wwan/wwan10at0/type: AT\n");
    EXPECT_EQ((Fields{{"Name", "wwan1"},
                      {"VendorId", "17cb"},
                      {"ProductId", "0308"},
                      {"Kind", "Wwan"},
                      {"Ports", "wwan1at0; wwan1qmi0"},
                      {"NetworkInterface", "wwan1net"},
                      {"Driver", "mhi-pci-generic"},
                      {"BusAddress", "0000:03:00.0"}}),
              collectOne(machine, "Modem"));
}

}  // namespace
