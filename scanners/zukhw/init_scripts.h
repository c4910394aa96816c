#pragma once

#include <set>
#include <string>
#include <vector>

class Machine;

// A script of /etc/init.d, as System V's init and OpenRC run them.
struct InitScript {
    std::string name;
    std::string path;         // relative to the root
    std::string description;  // empty when the script does not tell
    bool openRc = false;
    bool enabled = false;  // in a run level
};

// Those that are programs, by name.
std::vector<InitScript> readInitScripts(Machine& machine);
