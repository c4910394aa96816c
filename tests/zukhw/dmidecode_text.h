#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// One structure as dmidecode prints it.
struct DmidecodeBlock {
    unsigned handle = 0;
    unsigned type = 0;
    std::map<std::string, std::string> values;  // "Part Number" -> "HMA451R7MFR8N-TF"; of equal keys the last
    std::vector<std::pair<std::string, std::string>> lines;  // the same, all of them

    // Empty when there is no such line.
    std::string value(const std::string& key) const;
};

std::vector<DmidecodeBlock> readDmidecode(std::string_view text);
