// Group "NetworkAdapter": one instance per network interface, in order of index.
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/file_descriptor.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/net_interfaces.h"
#include "scanners/zukhw/net_kind.h"
#include "scanners/zukhw/netlink.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

// One interface with what several of its fields depend on.
struct Adapter {
    const NetInterface& interface;
    std::string path;                // its directory
    std::vector<std::string> files;  // the names in it
    std::string device;              // that of the device it belongs to, free of links, or empty

    bool has(std::string_view file) const {
        return std::find(files.begin(), files.end(), file) != files.end();
    }
};

Adapter readAdapter(Machine& machine, const NetInterface& interface) {
    const std::string path = "sys/class/net/" + interface.name;
    Adapter adapter{interface, path, machine.list(path), ""};
    if (adapter.has("device")) adapter.device = machine.resolve(path + "/device");
    return adapter;
}

std::string colonHex(std::string_view bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        if (!text.empty()) text += ':';
        text += kDigits[static_cast<unsigned char>(byte) >> 4];
        text += kDigits[static_cast<unsigned char>(byte) & 0xFU];
    }
    return text;
}

std::string permanentAddress(Machine& machine, const Adapter& adapter) {
    const NetlinkLink* link = machine.shared<NetlinkLinks>().find(adapter.interface.index);
    if (link != nullptr && !link->permanentAddress.empty())
        return cleanMacAddress(colonHex(link->permanentAddress));
    if (!adapter.has("bonding_slave")) return "";
    return cleanMacAddress(machine.text(adapter.path + "/bonding_slave/perm_hwaddr"));
}

std::string_view kindOf(Machine& machine, const Adapter& adapter) {
    const NetlinkLink* link = machine.shared<NetlinkLinks>().find(adapter.interface.index);
    const std::string uevent = machine.text(adapter.path + "/uevent");
    return netKind({std::string(findValue(uevent, "DEVTYPE", '=').value_or("")),
                    link != nullptr ? link->infoKind : "", machine.text(adapter.path + "/type"),
                    adapter.files});
}

// Asked on a plain socket; nothing goes out on the network.
std::string firmwareVersion(Machine& machine, const Adapter& adapter) {
    if (!machine.live() || adapter.device.empty() || adapter.interface.name.size() >= IFNAMSIZ) return "";
    const FileDescriptor fd(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ethtool_drvinfo info{};
    info.cmd = ETHTOOL_GDRVINFO;
    ifreq request{};
    std::memcpy(request.ifr_name, adapter.interface.name.data(), adapter.interface.name.size());
    request.ifr_data = reinterpret_cast<char*>(&info);
    if (!fd.valid() || ::ioctl(fd.get(), SIOCETHTOOL, &request) != 0) return "";
    return std::string(info.fw_version, ::strnlen(info.fw_version, sizeof info.fw_version));
}

void writeLink(Machine& machine, const Adapter& adapter, GroupWriter& out) {
    const std::string& path = adapter.path;
    const bool isPhysical = !adapter.device.empty() && !startsWith(adapter.device, "sys/devices/virtual/");
    out.text("InterfaceName", adapter.interface.name);
    out.number("InterfaceIndex", adapter.interface.index);
    out.text("Kind", kindOf(machine, adapter));
    out.boolean("Physical", isPhysical);
    out.text("MacAddress", adapter.interface.macAddress);
    out.text("PermanentMacAddress", permanentAddress(machine, adapter));
    out.number("Mtu", machine.number(path + "/mtu"));
    const std::string operState = machine.text(path + "/operstate");
    if (operState != "unknown") out.text("OperState", operState);
    if (const auto carrier = machine.number(path + "/carrier")) out.boolean("Carrier", *carrier != 0);
    const auto speed = machine.signedNumber(path + "/speed");  // -1 and 2^32-1 when there is no link
    if (speed && *speed > 0 && *speed < UINT32_MAX) out.number("SpeedMbps", *speed);
    const std::string duplex = machine.text(path + "/duplex");
    if (duplex != "unknown") out.text("Duplex", duplex);
    out.text("Alias", machine.text(path + "/ifalias"));
}

void writePciIds(Machine& machine, const std::string& pci, GroupWriter& out) {
    const std::string vendor = readDeviceId(machine, pci + "/vendor");
    const std::string device = readDeviceId(machine, pci + "/device");
    DeviceNames& names = machine.shared<DeviceNames>();
    out.text("Vendor", names.pciVendor(vendor));
    out.text("Model", names.pciDevice(vendor, device));
    out.text("VendorId", vendor);
    out.text("DeviceId", device);
    out.text("SubsystemVendorId", readDeviceId(machine, pci + "/subsystem_vendor"));
    out.text("SubsystemDeviceId", readDeviceId(machine, pci + "/subsystem_device"));
}

void writeUsbIds(Machine& machine, const std::string& usb, GroupWriter& out) {
    const std::string vendor = readDeviceId(machine, usb + "/idVendor");
    const std::string product = readDeviceId(machine, usb + "/idProduct");
    DeviceNames& names = machine.shared<DeviceNames>();
    out.text("Vendor", names.usbVendor(vendor));
    out.text("Model", names.usbProduct(vendor, product));
    out.text("VendorId", vendor);
    out.text("DeviceId", product);
}

void writeHardware(Machine& machine, const Adapter& adapter, GroupWriter& out) {
    if (adapter.device.empty()) return;
    out.text("Driver", machine.linkName(adapter.device + "/driver"));
    const std::string firmware = firmwareVersion(machine, adapter);
    out.hardware("FirmwareVersion", firmware);
    const std::string pci = pciAncestor(adapter.device);
    const std::string usb = usbAncestor(adapter.device);  // its controller is a PCI function further up
    const std::string& bus = usb.empty() ? pci : usb;
    if (!usb.empty()) {
        writeUsbIds(machine, usb, out);
    } else if (!pci.empty()) {
        writePciIds(machine, pci, out);
    }
    out.text("BusAddress", baseName(bus));
    const auto node = machine.signedNumber((pci.empty() ? adapter.device : pci) + "/numa_node");
    if (node && *node >= 0) out.number("NumaNode", *node);
}

std::vector<std::string> membersOf(Machine& machine, const Adapter& adapter) {
    constexpr std::string_view kLower = "lower_";
    std::vector<std::string> members;
    for (const std::string& file : adapter.files) {
        if (startsWith(file, kLower)) members.push_back(file.substr(kLower.size()));
    }
    if (!members.empty() || !adapter.has("bonding")) return members;
    const std::string slaves = machine.text(adapter.path + "/bonding/slaves");
    for (const std::string_view name : words(slaves)) members.emplace_back(name);
    std::sort(members.begin(), members.end());
    return members;
}

// "eth0.5  VID: 5	 REORDER_HDR: 1 ..."
std::optional<std::uint64_t> vlanId(Machine& machine, const Adapter& adapter) {
    const std::string config = machine.text("proc/net/vlan/" + adapter.interface.name);
    const std::vector<std::string_view> fields = words(config);
    const auto key = std::find(fields.begin(), fields.end(), "VID:");
    if (fields.end() - key < 2) return std::nullopt;
    return parseDecimal(key[1]);
}

void writeRelations(Machine& machine, const Adapter& adapter, GroupWriter& out) {
    if (adapter.has("dev_port")) out.number("PortNumber", machine.number(adapter.path + "/dev_port"));
    if (adapter.has("master")) out.text("Master", machine.linkName(adapter.path + "/master"));
    out.list("Members", membersOf(machine, adapter));
    if (adapter.has("bonding")) {
        const std::string mode = machine.text(adapter.path + "/bonding/mode");  // "active-backup 1"
        out.text("BondMode", mode.substr(0, mode.find(' ')));
        out.text("ActiveMember", machine.text(adapter.path + "/bonding/active_slave"));
    }
    out.number("VlanId", vlanId(machine, adapter));
    if (!adapter.device.empty()) {
        out.number("SriovVirtualFunctions", machine.number(adapter.device + "/sriov_numvfs"));
    }
}

}  // namespace

void collectNetworkAdapter(Machine& machine, GroupWriter& out) {
    for (const NetInterface& interface : machine.shared<NetInterfaces>().all()) {
        const Adapter adapter = readAdapter(machine, interface);
        out.beginInstance();
        writeLink(machine, adapter, out);
        writeHardware(machine, adapter, out);
        writeRelations(machine, adapter, out);
    }
}
