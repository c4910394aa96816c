#include "tests/zukhw/dmidecode_text.h"

#include <cstdio>

#include "scanners/zukhw/text.h"

std::vector<DmidecodeBlock> readDmidecode(std::string_view text) {
    std::vector<DmidecodeBlock> blocks;
    for (const std::string_view line : lines(text)) {
        DmidecodeBlock block;
        if (std::sscanf(std::string(line).c_str(), "Handle 0x%x, DMI type %u,", &block.handle, &block.type) ==
            2) {
            blocks.push_back(block);
        }
        const bool isValue = startsWith(line, "\t") && !startsWith(line, "\t\t");
        const std::size_t colon = line.find(": ");
        if (!isValue || blocks.empty() || colon == std::string_view::npos) continue;
        blocks.back().values[std::string(line.substr(1, colon - 1))] = cleanText(line.substr(colon + 2));
    }
    return blocks;
}
