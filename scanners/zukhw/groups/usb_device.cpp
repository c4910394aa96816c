// Group "USBDevice": one instance per device on the USB buses, hubs and root hubs included, bus by bus in the
// order of the ports.
#include <algorithm>
#include <set>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/fraction.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/usb_devices.h"

namespace {

constexpr char kHubClass[] = "09";

// The classes that say to look at the interfaces.
bool leavesItToInterfaces(const std::string& deviceClass) {
    return deviceClass == "00" || deviceClass == "ef";
}

const char* kindOf(const UsbDevice& device) {
    if (device.isRootHub()) return "RootHub";
    return device.deviceClass == kHubClass ? "Hub" : "Device";
}

std::vector<std::string> interfaceClasses(const UsbDevice& device) {
    std::set<std::string> classes;
    for (const UsbInterface& interface : device.interfaces) classes.emplace(interface.interfaceClass());
    return {classes.begin(), classes.end()};
}

std::vector<std::string> drivers(const UsbDevice& device) {
    std::set<std::string> names;
    for (const UsbInterface& interface : device.interfaces) names.insert(interface.driver);
    return {names.begin(), names.end()};
}

// "1-2" of "1-2.4", "usb1" of "1-2"; a root hub has none.
std::string parentPort(const UsbDevice& device) {
    if (device.isRootHub()) return "";
    const std::size_t dot = device.name.find_last_of('.');
    if (dot != std::string::npos) return device.name.substr(0, dot);
    return "usb" + device.name.substr(0, device.name.find('-'));
}

// A device names itself; what others call it stands beside that.
void writeNames(Machine& machine, const UsbDevice& device, GroupWriter& out) {
    DeviceNames& names = machine.shared<DeviceNames>();
    const std::string vendorName = names.usbVendor(device.vendor);
    const std::string productName = names.usbProduct(device.vendor, device.product);
    out.hardware("Vendor", device.makerText.empty() ? vendorName : device.makerText);
    out.hardware("Product", device.productText.empty() ? productName : device.productText);
    out.text("VendorName", vendorName);
    out.text("ProductName", productName);
    out.hardware("SerialNumber", device.serialText);
}

void writeClasses(Machine& machine, const UsbDevice& device, GroupWriter& out) {
    out.text("DeviceClass", device.deviceClass);
    out.text("Subclass", hex(machine.hexNumber(device.path + "/bDeviceSubClass"), 2));
    out.text("Protocol", hex(machine.hexNumber(device.path + "/bDeviceProtocol"), 2));
    std::string told = device.deviceClass;
    // A camera has its microphone behind itself: the first interface is what the device is for.
    if (leavesItToInterfaces(told) && !device.interfaces.empty())
        told = device.interfaces.front().interfaceClass();
    if (told != "00") out.text("ClassName", machine.shared<DeviceNames>().usbClass(told));
    out.list("InterfaceClasses", interfaceClasses(device));
}

void writeTraits(Machine& machine, const UsbDevice& device, GroupWriter& out) {
    const std::string speed = machine.text(device.path + "/speed");  // "1.5" is a speed, too, "unknown" none
    out.text("SpeedMbps", decimalFraction(speed));
    out.text("UsbVersion", machine.text(device.path + "/version"));
    std::string power = machine.text(device.path + "/bMaxPower");
    if (endsWith(power, "mA")) power.resize(power.size() - 2);
    out.number("MaxPowerMilliamps", parseDecimal(power));
    out.list("Drivers", drivers(device));
    const std::string removable = machine.text(device.path + "/removable");
    if (removable == "removable" || removable == "fixed") out.boolean("Removable", removable == "removable");
    out.number("ConfigurationCount", machine.number(device.path + "/bNumConfigurations"));
}

}  // namespace

void collectUSBDevice(Machine& machine, GroupWriter& out) {
    for (const UsbDevice& device : machine.shared<UsbDevices>().all()) {
        out.beginInstance();
        out.number("BusNumber", machine.number(device.path + "/busnum"));
        out.number("DeviceNumber", machine.number(device.path + "/devnum"));
        out.text("PortPath", device.name);
        out.text("Kind", kindOf(device));
        out.text("VendorId", device.vendor);
        out.text("ProductId", device.product);
        out.text("Revision", hex(machine.hexNumber(device.path + "/bcdDevice"), 4));
        writeNames(machine, device, out);
        writeClasses(machine, device, out);
        writeTraits(machine, device, out);
        out.text("ParentPort", parentPort(device));
        out.text("ControllerAddress", device.controller);
    }
}
