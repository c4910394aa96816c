#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

// What the service manager says of a service at this moment.
struct UnitState {
    std::string state;     // "active", "failed", ...
    std::string subState;  // "running", "exited", ...
    std::optional<std::uint32_t> mainPid;
};

using UnitStates = std::map<std::string, UnitState>;  // by the unit's name

// The states of all services that are loaded, asked for on the bus at `address` ("unix:path=/..."). Empty
// when there is no bus, or no library to talk to it, or no answer in time.
UnitStates readUnitStates(const std::string& address, std::chrono::milliseconds limit);
