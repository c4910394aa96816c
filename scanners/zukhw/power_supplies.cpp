#include "scanners/zukhw/power_supplies.h"

#include "scanners/zukhw/machine.h"

namespace {

// Micro units: energy in µWh, else charge in µAh times voltage in µV.
std::optional<std::uint64_t> milliwattHours(Machine& machine, const std::string& supply, const char* what) {
    constexpr std::uint64_t kMicroPerMilli = 1000;
    if (const auto energy = machine.number(supply + "energy_" + what)) return *energy / kMicroPerMilli;
    const auto charge = machine.number(supply + "charge_" + what);
    const auto voltage = machine.number(supply + "voltage_min_design");
    if (!charge || !voltage) return std::nullopt;
    constexpr std::uint64_t kNanoPerUnit = 1000 * 1000 * 1000;
    std::uint64_t picowattHours = 0;
    if (__builtin_mul_overflow(*charge, *voltage, &picowattHours)) return std::nullopt;
    return picowattHours / kNanoPerUnit;
}

Battery readBattery(Machine& machine, const std::string& supply) {
    Battery battery;
    battery.manufacturer = machine.text(supply + "manufacturer");
    battery.model = machine.text(supply + "model_name");
    battery.serialNumber = machine.text(supply + "serial_number");
    battery.technology = machine.text(supply + "technology");
    battery.designMilliwattHours = milliwattHours(machine, supply, "full_design");
    battery.fullMilliwattHours = milliwattHours(machine, supply, "full");
    battery.cycles = machine.number(supply + "cycle_count");
    return battery;
}

}  // namespace

PowerSupplies::PowerSupplies(Machine& machine) {
    static const std::string kDirectory = "sys/class/power_supply";
    known = machine.exists(kDirectory);
    for (const std::string& name : machine.list(kDirectory)) {
        const std::string supply = std::string(kDirectory).append("/").append(name).append("/");
        const std::string type = machine.text(supply + "type");
        if (type == "Mains") acOnline = acOnline.value_or(false) || machine.number(supply + "online") == 1U;
        if (type != "Battery" || machine.text(supply + "scope") == "Device") continue;
        if (machine.number(supply + "present") == 0U) continue;  // a bay without its battery
        batteries.push_back(readBattery(machine, supply));
    }
}
