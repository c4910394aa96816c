#pragma once

#include <string>
#include <string_view>

class Machine;

// Names of devices by their numbers (four lower-case hex digits), from udev's hardware database or else from
// the lists that it is made of; machine.shared<DeviceNames>(). Empty when nobody knows.
class DeviceNames {
  public:
    explicit DeviceNames(Machine& machine) : machine_(machine) {}

    std::string pciVendor(const std::string& vendor);
    std::string pciDevice(const std::string& vendor, const std::string& device);
    std::string pciSubsystem(const std::string& vendor, const std::string& device,
                             const std::string& subVendor, const std::string& subDevice);
    // baseClass "03"; subclass "00".
    std::string pciClass(const std::string& baseClass);
    std::string pciSubclass(const std::string& baseClass, const std::string& subclass);
    std::string usbVendor(const std::string& vendor);
    std::string usbProduct(const std::string& vendor, const std::string& product);
    // Two digits: "03" are input devices.
    std::string usbClass(const std::string& deviceClass);
    // The maker of a monitor or of an ACPI device by its three letters.
    std::string pnpVendor(const std::string& letters);

  private:
    Machine& machine_;
};
