#pragma once

#include <string>
#include <string_view>
#include <vector>

// One package that was brought to another version. What a log does not tell is empty.
struct PackageUpdate {
    std::string name, architecture;
    std::string fromVersion, toVersion;
    std::string date;       // "2026-05-20", in the machine's local time
    std::string requester;  // the user who asked for it
};

// The texts of the logs, each in its order.
std::vector<PackageUpdate> parseAptHistory(std::string_view text);
std::vector<PackageUpdate> parseDpkgLog(std::string_view text);
std::vector<PackageUpdate> parseDnfLog(std::string_view text);
std::vector<PackageUpdate> parseYumLog(std::string_view text);
std::vector<PackageUpdate> parseZyppHistory(std::string_view text);
