#pragma once

#include <string>
#include <vector>

#include "scanners/zukhw/input_bits.h"

class Machine;

struct InputDevice {
    std::string name;
    std::string path;                      // of its directory, for the driver; empty when not known
    std::string bus;                       // "USB"; empty when it has no name
    std::string vendor, product, version;  // four lower-case hex digits each; empty when not known
    std::string serial;                    // what tells it from others of its kind
    std::string physicalPath;
    std::string pointing;   // "Mouse", "Touchpad" and so on; empty for what points at nothing
    bool keyboard = false;  // one to write with: a power button is none
    InputBits keys, relativeAxes, lights;
};

// What people tell the machine something with, by the kernel's numbers; machine.shared<InputDevices>().
class InputDevices {
  public:
    explicit InputDevices(Machine& machine);

    const std::vector<InputDevice>& all() const { return devices_; }

  private:
    std::vector<InputDevice> devices_;
};
