#pragma once

#include <string>
#include <string_view>
#include <vector>

class Machine;

struct UsbInterface {
    std::string name;       // "1-2:1.0"
    std::string path;       // of its directory
    std::string classCode;  // class, subclass and protocol, two lower-case hex digits each
    std::string driver;

    std::string_view interfaceClass() const { return std::string_view(classCode).substr(0, 2); }
};

// Identifiers are lower-case hex and empty when they are not known; the texts are those of the device itself.
struct UsbDevice {
    std::string name;         // "1-2.4", or "usb1" for the root hub of bus 1
    std::string path;         // of its directory
    std::string vendor;       // four digits
    std::string product;      // four digits
    std::string deviceClass;  // two digits; "00" and "ef" leave it to the interfaces
    std::string makerText, productText, serialText;
    std::string controller;  // the PCI address of what the bus hangs on
    std::vector<UsbInterface> interfaces;

    bool isRootHub() const { return name.find('-') == std::string::npos; }
};

// What is on the USB buses; machine.shared<UsbDevices>().
class UsbDevices {
  public:
    explicit UsbDevices(Machine& machine);

    // Bus by bus, the root hub first, then by port.
    const std::vector<UsbDevice>& all() const { return devices_; }

  private:
    std::vector<UsbDevice> devices_;
};
