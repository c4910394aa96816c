// Group "SerialPort": one instance per terminal device with a real port behind it, by name; where there is
// none, the connectors that the firmware tells of.
#include <algorithm>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/usb_devices.h"

namespace {

constexpr char kDirectory[] = "sys/class/tty";

// The family of chips that PCs have, as the kernel numbers them from 1 on.
constexpr const char* kChips[] = {
    "",        "8250",     "16450",      "16550",   "16550A",  "Cirrus", "ST16650",  "ST16650V2",
    "TI16750", "Startech", "16C950/954", "ST16654", "XR16850", "RSA",    "NS16550A",
};

struct Port {
    std::string name;
    std::string path;        // of its directory in the class
    std::string device;      // the same, free of links
    bool isVirtual = false;  // there is no device
    std::uint64_t chip = 0;
    std::uint64_t ioPort = 0;
    std::uint64_t memory = 0;

    bool isUsb() const { return !usbAncestor(device).empty(); }
    bool isRfcomm() const { return startsWith(name, "rfcomm"); }
    bool isUart() const { return chip != 0 && (ioPort != 0 || memory != 0); }
};

// "tty0" and so on. There are 64, and what holds for one holds for all: a single driver makes them.
bool isConsole(std::string_view name) {
    return startsWith(name, "tty") && parseDecimal(name.substr(3));
}

const char* kindOf(const Port& port) {
    if (port.isRfcomm()) return "Rfcomm";
    if (port.isUsb()) return "UsbSerial";
    return port.chip < std::size(kChips) ? "Uart" : "Platform";
}

Port readPort(Machine& machine, const std::string& name) {
    Port port;
    port.name = name;
    port.path = std::string(kDirectory) + '/' + name;
    const std::string target = machine.link(port.path);
    port.isVirtual = target.find("/virtual/") != std::string::npos && !port.isRfcomm();
    if (port.isVirtual) return port;
    port.device = machine.resolve(port.path);
    // A copy may have a plain directory there, with the link to the device in it.
    if (port.device == port.path) port.device = machine.resolve(port.path + "/device");
    if (port.isUsb()) return port;
    port.chip = machine.number(port.path + "/type").value_or(0);
    if (port.chip == 0) return port;
    port.ioPort = machine.hexNumber(port.path + "/port").value_or(0);
    port.memory = machine.hexNumber(port.path + "/iomem_base").value_or(0);
    return port;
}

// The part right after the one that begins with `bus`: "00:03" of ".../pnp0/00:03/tty/ttyS0".
std::string partAfter(const std::string& path, std::string_view bus) {
    const std::vector<std::string_view> parts = split(path, '/');
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        if (startsWith(parts[i], bus)) return std::string(parts[i + 1]);
    }
    return "";
}

std::string busAddress(const Port& port) {
    if (port.isUsb()) return std::string(baseName(usbAncestor(port.device)));
    std::string pci(baseName(pciAncestor(port.device)));
    if (!pci.empty()) return pci;
    const std::string pnp = partAfter(port.device, "pnp");
    return pnp.empty() ? partAfter(port.device, "platform") : pnp;
}

// Recent kernels put devices of their own between the port and what it belongs to.
std::string driverOf(Machine& machine, const Port& port) {
    std::string_view path(port.device);
    while (!path.empty()) {
        const std::string link = machine.link(std::string(path) + "/driver");
        if (!link.empty() && link.find("/serial-base/") == std::string::npos)
            return std::string(baseName(link));
        path = parentPath(path);
    }
    return "";
}

void writeUart(Machine& machine, const Port& port, GroupWriter& out) {
    constexpr unsigned kClocksPerBit = 16;
    if (!port.isUart()) return;
    if (port.chip < std::size(kChips)) out.text("Chip", kChips[port.chip]);
    if (port.ioPort != 0) out.text("IoPort", hex(port.ioPort, 4));
    if (port.memory != 0) out.text("MemoryAddress", hex(port.memory, port.memory > UINT32_MAX ? 16 : 8));
    const auto irq = machine.number(port.path + "/irq");
    if (irq != 0U) out.number("Irq", irq);
    const std::uint64_t clock = machine.number(port.path + "/uartclk").value_or(0);
    if (clock >= kClocksPerBit) out.number("MaxBaud", clock / kClocksPerBit);
    out.number("FifoBytes", machine.number(port.path + "/xmit_fifo_size"));
}

void writeUsb(Machine& machine, const Port& port, GroupWriter& out) {
    if (!port.isUsb()) return;
    const std::string name(baseName(usbAncestor(port.device)));
    const std::vector<UsbDevice>& devices = machine.shared<UsbDevices>().all();
    const auto device = std::find_if(devices.begin(), devices.end(),
                                     [&](const UsbDevice& candidate) { return candidate.name == name; });
    if (device == devices.end()) return;
    out.text("VendorId", device->vendor);
    out.text("ProductId", device->product);
    out.hardware("SerialNumber", device->serialText);
    out.hardware("Model", device->productText);
}

void writePort(Machine& machine, const Port& port, const std::vector<std::string_view>& consoles,
               GroupWriter& out) {
    out.text("DeviceName", port.name);
    out.text("Kind", kindOf(port));
    writeUart(machine, port, out);
    out.text("Driver", driverOf(machine, port));
    out.text("BusAddress", busAddress(port));
    const std::string pnp = partAfter(port.device, "pnp");
    if (!pnp.empty()) {
        const std::string ids = machine.text("sys/bus/pnp/devices/" + pnp + "/id");
        out.text("PnpId", ids.substr(0, ids.find('\n')));
    }
    writeUsb(machine, port, out);
    out.boolean("Console", std::find(consoles.begin(), consoles.end(), port.name) != consoles.end());
}

void writeConnectors(Machine& machine, GroupWriter& out) {
    constexpr unsigned kFirstSerial = 0x06;
    constexpr unsigned kLastSerial = 0x0A;
    for (const SmbiosStructure* connector : machine.shared<Smbios>().ofType(8)) {
        const unsigned type = connector->byte(0x08).value_or(0);
        if (type < kFirstSerial || type > kLastSerial) continue;
        out.beginInstance();
        out.text("Kind", "Connector");
        out.hardware("InternalDesignation", connector->string(0x04));
        out.hardware("ExternalDesignation", connector->string(0x06));
    }
}

}  // namespace

void collectSerialPort(Machine& machine, GroupWriter& out) {
    const std::string active = machine.text(std::string(kDirectory) + "/console/active");
    const std::vector<std::string_view> consoles = words(active);
    bool any = false;
    bool consolesAreVirtual = false;
    for (const std::string& name : machine.list(kDirectory)) {
        if (consolesAreVirtual && isConsole(name)) continue;
        const Port port = readPort(machine, name);
        if (port.isVirtual && isConsole(name)) consolesAreVirtual = true;
        if (!port.isUart() && !port.isUsb() && !port.isRfcomm()) continue;
        any = true;
        out.beginInstance();
        writePort(machine, port, consoles, out);
    }
    if (!any) writeConnectors(machine, out);
}
