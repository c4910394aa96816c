#include "scanners/zukhw/usb_devices.h"

#include <algorithm>
#include <map>

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kDirectory = "sys/bus/usb/devices";
constexpr std::string_view kRootHub = "usb";

std::string pathOf(const std::string& name) {
    return std::string(kDirectory) + '/' + name;
}

// Two hex digits; empty when the file does not have them.
std::string code(Machine& machine, const std::string& path) {
    return hex(machine.hexNumber(path), 2);
}

// Of the device that an interface's name begins with: "1-2" of "1-2:1.0", "usb1" of "1-0:1.0".
std::string ownerOf(std::string_view interface) {
    const std::string_view port = interface.substr(0, interface.find(':'));
    if (!endsWith(port, "-0")) return std::string(port);
    return std::string(kRootHub) + std::string(port.substr(0, port.size() - 2));
}

UsbInterface readInterface(Machine& machine, const std::string& name) {
    UsbInterface interface;
    interface.name = name;
    interface.path = pathOf(name);
    const std::string base = code(machine, interface.path + "/bInterfaceClass");
    if (!base.empty()) {
        interface.classCode = base + code(machine, interface.path + "/bInterfaceSubClass") +
                              code(machine, interface.path + "/bInterfaceProtocol");
    }
    interface.driver = machine.linkName(interface.path + "/driver");
    return interface;
}

UsbDevice readDevice(Machine& machine, const std::string& name) {
    UsbDevice device;
    device.name = name;
    device.path = pathOf(name);
    device.vendor = readDeviceId(machine, device.path + "/idVendor");
    if (device.vendor.empty()) return device;
    device.product = readDeviceId(machine, device.path + "/idProduct");
    device.deviceClass = code(machine, device.path + "/bDeviceClass");
    device.makerText = machine.text(device.path + "/manufacturer");
    device.productText = machine.text(device.path + "/product");
    device.serialText = machine.text(device.path + "/serial");
    device.controller = baseName(pciAncestor(machine.link(device.path)));
    return device;
}

// "usb2" and "2-1.4" are on bus 2.
std::uint64_t busOf(const UsbDevice& device) {
    std::string_view name(device.name);
    if (device.isRootHub()) name.remove_prefix(kRootHub.size());
    return parseDecimal(name.substr(0, name.find('-'))).value_or(UINT64_MAX);
}

bool isBefore(const UsbDevice& a, const UsbDevice& b) {
    if (busOf(a) != busOf(b)) return busOf(a) < busOf(b);
    if (a.isRootHub() != b.isRootHub()) return a.isRootHub();
    return naturalLess(a.name, b.name);
}

}  // namespace

UsbDevices::UsbDevices(Machine& machine) {
    std::multimap<std::string, UsbInterface> interfaces;  // by the device that they belong to
    for (const std::string& name : machine.list(kDirectory)) {
        if (name.find(':') != std::string::npos) {
            interfaces.emplace(ownerOf(name), readInterface(machine, name));
        } else if (isUsbPort(name) || startsWith(name, kRootHub)) {
            devices_.push_back(readDevice(machine, name));
        }
    }
    const auto isNameless = [](const UsbDevice& device) { return device.vendor.empty(); };
    devices_.erase(std::remove_if(devices_.begin(), devices_.end(), isNameless), devices_.end());
    for (UsbDevice& device : devices_) {
        const auto [first, last] = interfaces.equal_range(device.name);
        for (auto entry = first; entry != last; ++entry) device.interfaces.push_back(entry->second);
    }
    std::sort(devices_.begin(), devices_.end(), isBefore);
}
