#pragma once

#include <string>
#include <string_view>
#include <vector>

class Machine;

// What a service's unit file says of it; empty where it does not.
struct UnitFacts {
    std::string description, user, type;
    std::string executable;    // the program of the first ExecStart
    bool installable = false;  // it has an [Install] section
};

// Adds what a unit's file, or one that was dropped in, sets; of settings that were made before the last
// counts.
void addUnitFile(std::string_view text, UnitFacts* facts);

enum class StartMode { Enabled, Disabled, Static, Masked, Alias, Generated };

// A systemd service of this machine.
struct ServiceUnit {
    std::string name;  // "ssh.service", "getty@tty1.service"
    std::string path;  // of the file that defines it, relative to the root
    StartMode mode = StartMode::Static;
    UnitFacts facts;  // of an alias or a masked unit empty
};

// All of them, in no order. Of files with the same name the one of the highest directory counts; templates
// count by the instances that are enabled.
std::vector<ServiceUnit> readServiceUnits(Machine& machine);
