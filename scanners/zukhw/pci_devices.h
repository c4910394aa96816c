#pragma once

#include <string>
#include <string_view>
#include <vector>

class Machine;

// Where a PCI function sits: "0000:03:00.1". Ordered as numbers; a domain may have more than four digits.
struct PciPlace {
    unsigned domain = 0;
    unsigned bus = 0;
    unsigned device = 0;
    unsigned function = 0;
};

// Identifiers are lower-case hex, and empty when they are not known or the part has none.
struct PciDevice {
    PciPlace place;
    std::string address;  // the place as text, which is the device's name
    std::string path;     // of its directory
    std::string parent;   // the address of the bridge that it is behind; empty on a root bus
    std::string vendor, device, subsystemVendor, subsystemDevice;  // four digits each
    std::string classCode;  // base class, subclass, programming interface: two digits each
    std::string driver;

    std::string baseClass() const { return classCode.substr(0, 2); }
    std::string subclass() const { return classCode.size() == 6 ? classCode.substr(2, 2) : ""; }
};

// The functions on the PCI buses; machine.shared<PciDevices>().
class PciDevices {
  public:
    explicit PciDevices(Machine& machine);

    // Ordered by place.
    const std::vector<PciDevice>& all() const { return devices_; }
    // Null when there is none; valid as long as this object.
    const PciDevice* find(std::string_view address) const;

  private:
    std::vector<PciDevice> devices_;
};
