#include "tests/zukhw/dmidecode_text.h"

#include <regex>

#include "scanners/zukhw/text.h"

std::vector<DmidecodeBlock> readDmidecode(std::string_view text) {
    std::vector<DmidecodeBlock> blocks;
    for (const std::string_view line : lines(text)) {
        static const std::regex kHead("Handle (0x[0-9A-F]+), DMI type (\\d+),.*");
        std::cmatch found;
        if (std::regex_match(line.begin(), line.end(), found, kHead)) {
            DmidecodeBlock block;
            block.handle = static_cast<unsigned>(std::stoul(found[1], nullptr, 16));
            block.type = static_cast<unsigned>(std::stoul(found[2]));
            blocks.push_back(block);
        }
        const bool isValue = startsWith(line, "\t") && !startsWith(line, "\t\t");
        const std::size_t colon = line.find(": ");
        if (!isValue || blocks.empty() || colon == std::string_view::npos) continue;
        const std::string key(line.substr(1, colon - 1));
        blocks.back().lines.emplace_back(key, cleanText(line.substr(colon + 2)));
        blocks.back().values[key] = blocks.back().lines.back().second;
    }
    return blocks;
}

std::string DmidecodeBlock::value(const std::string& key) const {
    const auto found = values.find(key);
    return found == values.end() ? "" : found->second;
}
