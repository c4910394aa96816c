#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

// One structure as dmidecode prints it.
struct DmidecodeBlock {
    unsigned handle = 0;
    unsigned type = 0;
    std::map<std::string, std::string> values;  // "Part Number" -> "HMA451R7MFR8N-TF"
};

std::vector<DmidecodeBlock> readDmidecode(std::string_view text);
