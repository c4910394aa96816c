#pragma once

#include <string>
#include <vector>

struct ScanConfig {
    std::vector<std::string> groups;  // the configuration names of the groups asked for, as they stand
};

// Reads KAV/ZUK/Hardware/Group@Name of the configuration file. Returns an empty string, or what is wrong.
std::string readConfig(const std::string& path, ScanConfig* config);
