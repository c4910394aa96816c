#pragma once

#include <string>
#include <vector>

// One command line switch that takes a value: "-c FILE", "--config FILE" or "--config=FILE".
struct OptionSpec {
    const char* shortName;  // "-c", or null
    const char* longName;   // "--config"
    std::string* value;     // receives the value; untouched when the switch is absent
};

// One that takes none: "--help".
struct FlagSpec {
    const char* longName;
    bool* value;
};

// Reads the whole command line (without the program's name). A switch may stand once and in any place.
// Returns an empty string, or a sentence that says what is wrong with which word.
std::string parseOptions(const std::vector<std::string>& words, const std::vector<OptionSpec>& options,
                         const std::vector<FlagSpec>& flags);
