#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class Machine;

struct Battery {
    std::string manufacturer, model, serialNumber, technology;
    std::optional<std::uint64_t> designMilliwattHours, fullMilliwattHours, cycles;
};

// What feeds the system, by /sys/class/power_supply; machine.shared<PowerSupplies>(). Batteries of mice and
// the like are left out.
struct PowerSupplies {
    explicit PowerSupplies(Machine& machine);

    bool known = false;              // the kernel tells about power supplies at all
    std::vector<Battery> batteries;  // in the order of their names
    std::optional<bool> acOnline;    // no value without a mains adapter
};
