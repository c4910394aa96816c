#include "scanners/zukhw/device_names.h"

#include "scanners/zukhw/display_makers.h"
#include "scanners/zukhw/hwdb.h"
#include "scanners/zukhw/ids_file.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

FileDescriptor openFirst(Machine& machine, const char* name) {
    for (const char* directory : {"usr/share/hwdata/", "usr/share/misc/", "usr/share/"}) {
        FileDescriptor file = machine.open(std::string(directory) + name);
        if (file.valid()) return file;
    }
    return FileDescriptor();
}

// One of the lists, with the file that it reads.
struct Names {
    Names(Machine& machine, const char* name) : file(openFirst(machine, name)), list(file) {}

    FileAccess file;
    IdsFile list;
};
struct PciIds : Names {
    explicit PciIds(Machine& machine) : Names(machine, "pci.ids") {}
};
struct UsbIds : Names {
    explicit UsbIds(Machine& machine) : Names(machine, "usb.ids") {}
};

// The database writes numbers of PCI devices with eight upper-case digits, those of others with four.
std::string upper(std::string_view hex) {
    std::string text;
    for (const char c : hex) text += c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}
std::string pciName(const std::string& vendor, const std::string& device) {
    return "pci:v0000" + upper(vendor) + "d0000" + upper(device);
}

constexpr char kVendor[] = "ID_VENDOR_FROM_DATABASE";
constexpr char kModel[] = "ID_MODEL_FROM_DATABASE";
// Numbers that no device has: the name then stands for its maker, or its model, alone.
constexpr char kNoDevice[] = "d0000FFFFsv0000FFFFsd0000FFFFbcFFscFFiFF";
constexpr char kNoIds[] = "d0000FFFFsv0000FFFFsd0000FFFF";
constexpr char kNoSubsystem[] = "sv0000FFFFsd0000FFFFbcFFscFFiFF";

std::string property(Machine& machine, const std::string& name, const char* key) {
    const Hwdb::Properties properties = machine.shared<Hwdb>().lookup(name);
    const auto found = properties.find(key);
    return found == properties.end() ? "" : found->second;
}

bool hasHwdb(Machine& machine) {
    return machine.shared<Hwdb>().available();
}

}  // namespace

std::string DeviceNames::pciVendor(const std::string& vendor) {
    if (vendor.empty()) return "";
    if (!hasHwdb(machine_)) return machine_.shared<PciIds>().list.name({vendor});
    return property(machine_, "pci:v0000" + upper(vendor) + kNoDevice, kVendor);
}

std::string DeviceNames::pciDevice(const std::string& vendor, const std::string& device) {
    if (vendor.empty() || device.empty()) return "";
    if (!hasHwdb(machine_)) return machine_.shared<PciIds>().list.name({vendor, device});
    return property(machine_, pciName(vendor, device) + kNoSubsystem, kModel);
}

std::string DeviceNames::pciSubsystem(const std::string& vendor, const std::string& device,
                                      const std::string& subVendor, const std::string& subDevice) {
    if (vendor.empty() || device.empty() || subVendor.empty() || subDevice.empty()) return "";
    if (!hasHwdb(machine_)) {
        return machine_.shared<PciIds>().list.name({vendor, device, subVendor + ' ' + subDevice});
    }
    const std::string name =
        pciName(vendor, device) + "sv0000" + upper(subVendor) + "sd0000" + upper(subDevice) + "bcFFscFFiFF";
    // "Device (Subsystem)"; without an entry for the subsystem the database answers with the device.
    const std::string model = property(machine_, name, kModel);
    const std::string head = pciDevice(vendor, device) + " (";
    if (!startsWith(model, head) || !endsWith(model, ")")) return "";
    return model.substr(head.size(), model.size() - head.size() - 1);
}

std::string DeviceNames::pciClass(const std::string& baseClass) {
    if (baseClass.empty()) return "";
    if (!hasHwdb(machine_)) return machine_.shared<PciIds>().list.name({"C " + baseClass});
    const std::string name = std::string("pci:v0000FFFF") + kNoIds + "bc" + upper(baseClass) + "scFFiFF";
    return property(machine_, name, "ID_PCI_CLASS_FROM_DATABASE");
}

std::string DeviceNames::pciSubclass(const std::string& baseClass, const std::string& subclass) {
    if (baseClass.empty() || subclass.empty()) return "";
    if (!hasHwdb(machine_)) return machine_.shared<PciIds>().list.name({"C " + baseClass, subclass});
    const std::string name =
        std::string("pci:v0000FFFF") + kNoIds + "bc" + upper(baseClass) + "sc" + upper(subclass) + "iFF";
    return property(machine_, name, "ID_PCI_SUBCLASS_FROM_DATABASE");
}

std::string DeviceNames::usbVendor(const std::string& vendor) {
    if (vendor.empty()) return "";
    if (!hasHwdb(machine_)) return machine_.shared<UsbIds>().list.name({vendor});
    return property(machine_, "usb:v" + upper(vendor) + "pFFFF", kVendor);
}

std::string DeviceNames::usbProduct(const std::string& vendor, const std::string& product) {
    if (vendor.empty() || product.empty()) return "";
    if (!hasHwdb(machine_)) return machine_.shared<UsbIds>().list.name({vendor, product});
    return property(machine_, "usb:v" + upper(vendor) + 'p' + upper(product), kModel);
}

std::string DeviceNames::usbClass(const std::string& deviceClass) {
    if (deviceClass.empty()) return "";
    if (!hasHwdb(machine_)) return machine_.shared<UsbIds>().list.name({"C " + deviceClass});
    return property(machine_, "usb:vFFFFpFFFFdFFFFdc" + upper(deviceClass), "ID_USB_CLASS_FROM_DATABASE");
}

std::string DeviceNames::pnpVendor(const std::string& letters) {
    if (letters.empty()) return "";
    const std::string name = property(machine_, "acpi:" + letters + "0000:", kVendor);
    return name.empty() ? std::string(displayMaker(letters)) : name;
}
