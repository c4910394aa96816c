#pragma once

#include <string>
#include <string_view>
#include <vector>

class Machine;

// The parts of a device's path free of links ("sys/devices/pci0000:00/0000:00:02.0/virtio1/block/vda"): what
// stands further left is what the device hangs on.

// "0000:00:1f.2"; domains may have more than four digits.
bool isPciAddress(std::string_view name);
// "1-1.4", a port of USB bus 1; interfaces ("1-1.4:1.0") are none.
bool isUsbPort(std::string_view name);

// The path of the nearest part that is a PCI function or a USB device, or empty.
std::string pciAncestor(std::string_view path);
std::string usbAncestor(std::string_view path);

// The last part of a path.
std::string_view baseName(std::string_view path);
// The path without its last part; empty when there is only one.
std::string_view parentPath(std::string_view path);

// The name of the driver that the `driver` link of the path or of what it hangs on names, nearest first.
std::string nearestDriver(Machine& machine, std::string_view path);

// An id file of a PCI or USB device ("0x1af4") as four lower-case hex digits, or empty.
std::string readDeviceId(Machine& machine, const std::string& path);
