// Group "Modem": one instance per modem on a PCI or USB bus or among the kernel's wireless wide area devices,
// by name.
#include <algorithm>
#include <set>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/pci_devices.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/usb_devices.h"

namespace {

struct Modem {
    std::string name;
    std::string vendor, model, vendorId, productId, serial;
    const char* kind = "";
    std::vector<std::string> ports;
    std::vector<std::string> networkInterfaces;
    std::string driver;
    std::string address;
};

bool isModemInterface(const UsbInterface& interface) {
    static constexpr const char* kDrivers[] = {"option", "qmi_wwan", "cdc_mbim", "sierra"};
    constexpr std::string_view kSerialWithCommands = "020201";  // abstract control model, AT commands
    constexpr std::string_view kMobileBroadband = "020e";
    if (interface.classCode == kSerialWithCommands || startsWith(interface.classCode, kMobileBroadband))
        return true;
    return std::find(std::begin(kDrivers), std::end(kDrivers), interface.driver) != std::end(kDrivers);
}

// What programs talk to: ttyUSB0 stands in the interface's directory, ttyACM0 and cdc-wdm0 one further down.
void gatherUsbPorts(Machine& machine, const UsbInterface& interface, Modem* modem) {
    for (const std::string& name : machine.list(interface.path)) {
        if (startsWith(name, "ttyUSB")) modem->ports.push_back(name);
        if (name != "tty" && name != "usbmisc" && name != "net") continue;
        auto& names = name == "net" ? modem->networkInterfaces : modem->ports;
        for (const std::string& entry : machine.list(interface.path + '/' + name)) names.push_back(entry);
    }
}

std::optional<Modem> usbModem(Machine& machine, const UsbDevice& device) {
    const auto found = std::find_if(device.interfaces.begin(), device.interfaces.end(), isModemInterface);
    if (found == device.interfaces.end()) return std::nullopt;
    DeviceNames& names = machine.shared<DeviceNames>();
    Modem modem;
    modem.vendor = device.makerText.empty() ? names.usbVendor(device.vendor) : device.makerText;
    modem.model =
        device.productText.empty() ? names.usbProduct(device.vendor, device.product) : device.productText;
    modem.name = modem.model.empty() ? device.name : modem.model;
    modem.vendorId = device.vendor;
    modem.productId = device.product;
    modem.serial = device.serialText;
    modem.kind = "Usb";
    modem.driver = found->driver;
    modem.address = device.name;
    for (const UsbInterface& interface : device.interfaces) gatherUsbPorts(machine, interface, &modem);
    return modem;
}

void nameByPci(Machine& machine, const PciDevice& device, Modem* modem) {
    DeviceNames& names = machine.shared<DeviceNames>();
    modem->vendor = names.pciVendor(device.vendor);
    modem->model = names.pciDevice(device.vendor, device.device);
    modem->vendorId = device.vendor;
    modem->productId = device.device;
    modem->driver = device.driver;
    modem->address = device.address;
}

Modem pciModem(Machine& machine, const PciDevice& device) {
    Modem modem;
    nameByPci(machine, device, &modem);
    modem.name = modem.model.empty() ? device.address : modem.model;
    modem.kind = "Pci";
    return modem;
}

// "wwan0" is a modem, "wwan0at0" and "wwan0qmi0" are its ports.
std::optional<Modem> wwanModem(Machine& machine, const std::string& name,
                               const std::vector<std::string>& all) {
    constexpr std::string_view kModem = "wwan";
    const std::string path = "sys/class/wwan/" + name;
    if (!startsWith(name, kModem) || !parseDecimal(name.substr(kModem.size()))) return std::nullopt;
    const std::string device = machine.link(path);
    if (!usbAncestor(device).empty()) return std::nullopt;  // found on the bus already
    Modem modem;
    modem.name = name;
    modem.kind = "Wwan";
    for (const std::string& port : all) {
        const bool isOwn =
            startsWith(port, name) && port.size() > name.size() && !parseDecimal(port.substr(name.size(), 1));
        if (isOwn) modem.ports.push_back(port);
    }
    modem.networkInterfaces = machine.list(path + "/net");
    const PciDevice* pci = machine.shared<PciDevices>().find(baseName(pciAncestor(device)));
    if (pci != nullptr) nameByPci(machine, *pci, &modem);
    return modem;
}

std::vector<Modem> findModems(Machine& machine) {
    constexpr std::string_view kPciModem = "0703";
    std::vector<Modem> modems;
    for (const PciDevice& device : machine.shared<PciDevices>().all()) {
        if (startsWith(device.classCode, kPciModem)) modems.push_back(pciModem(machine, device));
    }
    for (const UsbDevice& device : machine.shared<UsbDevices>().all()) {
        if (auto modem = usbModem(machine, device)) modems.push_back(std::move(*modem));
    }
    const std::vector<std::string> wireless = machine.list("sys/class/wwan");
    for (const std::string& name : wireless) {
        if (auto modem = wwanModem(machine, name, wireless)) modems.push_back(std::move(*modem));
    }
    // Two of a kind keep the order of their places.
    std::stable_sort(modems.begin(), modems.end(),
                     [](const Modem& a, const Modem& b) { return naturalLess(a.name, b.name); });
    return modems;
}

}  // namespace

void collectModem(Machine& machine, GroupWriter& out) {
    for (Modem& modem : findModems(machine)) {
        naturalSort(&modem.ports);
        naturalSort(&modem.networkInterfaces);
        out.beginInstance();
        out.text("Name", modem.name);
        out.hardware("Vendor", modem.vendor);
        out.hardware("Model", modem.model);
        out.text("VendorId", modem.vendorId);
        out.text("ProductId", modem.productId);
        out.hardware("SerialNumber", modem.serial);
        out.text("Kind", modem.kind);
        out.list("Ports", modem.ports);
        out.list("NetworkInterface", modem.networkInterfaces);
        out.text("Driver", modem.driver);
        out.text("BusAddress", modem.address);
    }
}
