// Group "Video": one instance per display controller on a PCI bus, ordered by address, then the others that
// the kernel drives.
#include <algorithm>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/drm.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/pci_devices.h"
#include "scanners/zukhw/pci_link.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kDisplayController[] = "03";
constexpr char kNvidia[] = "10de";

const char* className(const PciDevice& device) {
    const std::string subclass = device.subclass();
    if (subclass == "00") return "VGA";
    return subclass == "02" ? "3D" : "Display";
}

void writeIdentity(Machine& machine, const PciDevice& device, const std::string& nvidiaModel,
                   GroupWriter& out) {
    DeviceNames& names = machine.shared<DeviceNames>();
    const std::string listed = names.pciDevice(device.vendor, device.device);
    out.text("Vendor", names.pciVendor(device.vendor));
    out.text("Model", nvidiaModel.empty() ? listed : nvidiaModel);
    out.text("VendorId", device.vendor);
    out.text("DeviceId", device.device);
    out.text("SubsystemVendorId", device.subsystemVendor);
    out.text("SubsystemDeviceId", device.subsystemDevice);
    out.text("Revision", hex(machine.hexNumber(device.path + "/revision"), 2));
    out.text("SubsystemVendor", names.pciVendor(device.subsystemVendor));
    out.text("Class", className(device));
    out.text("BusAddress", device.address);
    out.text("Driver", device.driver);
    const auto boot = machine.number(device.path + "/boot_vga");
    if (boot) out.boolean("BootDisplay", *boot == 1);
}

// The largest of the prefetchable address ranges: what the processor sees of the card's memory, which may be
// less than there is.
std::uint64_t apertureBytes(Machine& machine, const PciDevice& device) {
    constexpr std::uint64_t kPrefetchableMemory = 0x2200;  // IORESOURCE_PREFETCH | IORESOURCE_MEM
    std::uint64_t largest = 0;
    const std::string text = machine.text(device.path + "/resource");
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> columns = words(line);
        if (columns.size() != 3) continue;
        const auto first = parseHex(columns[0]);
        const auto last = parseHex(columns[1]);
        const auto flags = parseHex(columns[2]);
        if (!first || !last || !flags || *last <= *first) continue;
        if ((*flags & kPrefetchableMemory) != kPrefetchableMemory) continue;
        largest = std::max(largest, *last - *first + 1);
    }
    return largest;
}

void writeMemory(Machine& machine, const PciDevice& device, GroupWriter& out) {
    if (const auto bytes = machine.number(device.path + "/mem_info_vram_total")) {
        out.number("MemoryBytes", bytes);
        out.text("MemorySource", "Driver");
    } else if (const std::uint64_t aperture = apertureBytes(machine, device)) {
        out.number("MemoryBytes", aperture);
        out.text("MemorySource", "Aperture");
    }
}

// "1920,1080" of the frame buffer that the driver of the card below that device made.
std::string currentResolution(Machine& machine, const std::string& device) {
    if (device.empty()) return "";
    static const std::string kDirectory = "sys/class/graphics";
    for (const std::string& name : machine.list(kDirectory)) {
        if (!startsWith(name, "fb") || !parseDecimal(name.substr(2))) continue;
        std::string path = kDirectory;
        path += '/' + name;
        // In a copy it may be a plain directory, with its device link kept.
        const bool isBelow = startsWith(machine.resolve(path), device + '/');
        if (!isBelow && machine.resolve(path + "/device") != device) continue;
        std::string size = machine.text(path + "/virtual_size");
        std::replace(size.begin(), size.end(), ',', 'x');
        return size;
    }
    return "";
}

void writeOutputs(const DrmCard& card, GroupWriter& out) {
    std::vector<std::string> all;
    std::vector<std::string> connected;
    for (const DrmConnector& connector : card.connectors) {
        all.push_back(connector.name);
        if (connector.connected) connected.push_back(connector.name);
    }
    out.text("DrmCard", card.name);
    out.list("Outputs", all);
    out.list("ConnectedOutputs", connected);
}

void writeController(Machine& machine, const PciDevice& device, GroupWriter& out) {
    std::string nvidia;
    if (device.vendor == kNvidia)
        nvidia = machine.text("proc/driver/nvidia/gpus/" + device.address + "/information");
    writeIdentity(machine, device, std::string(findValue(nvidia, "Model", ':').value_or("")), out);
    writeMemory(machine, device, out);
    out.text("Uuid", findValue(nvidia, "GPU UUID", ':').value_or(""));
    const std::vector<DrmCard>& cards = machine.shared<Drm>().cards();
    const auto card = std::find_if(cards.begin(), cards.end(), [&](const DrmCard& candidate) {
        return candidate.pciAddress == device.address;
    });
    if (card != cards.end()) writeOutputs(*card, out);
    out.text("CurrentResolution", currentResolution(machine, machine.resolve(device.path)));
    writePciLink(machine, device.path, out);
    const auto node = machine.signedNumber(device.path + "/numa_node");
    if (node && *node >= 0) out.number("NumaNode", *node);
}

// The device tree names a controller, most exact name first: "brcm,bcm2711-vc5\0brcm,bcm2835-vc4\0".
void writeOther(Machine& machine, const DrmCard& card, GroupWriter& out) {
    const std::string compatible = machine.text(card.path + "/device/of_node/compatible");
    const std::string_view name = std::string_view(compatible).substr(0, compatible.find('\0'));
    const std::size_t comma = name.find(',');
    if (comma != std::string_view::npos) out.text("Vendor", name.substr(0, comma));
    out.text("Model", comma == std::string_view::npos ? name : name.substr(comma + 1));
    out.text("BusAddress", machine.linkName(card.path + "/device"));
    out.text("Driver", machine.linkName(card.path + "/device/driver"));
    writeOutputs(card, out);
    out.text("CurrentResolution", currentResolution(machine, machine.resolve(card.path + "/device")));
}

}  // namespace

void collectVideo(Machine& machine, GroupWriter& out) {
    const PciDevices& devices = machine.shared<PciDevices>();
    for (const PciDevice& device : devices.all()) {
        if (device.baseClass() != kDisplayController) continue;
        out.beginInstance();
        writeController(machine, device, out);
    }
    for (const DrmCard& card : machine.shared<Drm>().cards()) {
        const PciDevice* device = devices.find(card.pciAddress);
        if (device != nullptr && device->baseClass() == kDisplayController) continue;
        out.beginInstance();
        writeOther(machine, card, out);
    }
}
