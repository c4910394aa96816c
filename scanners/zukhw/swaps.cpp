#include "scanners/zukhw/swaps.h"

#include <algorithm>

#include "scanners/zukhw/block_devices.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/octal_escapes.h"
#include "scanners/zukhw/text.h"

Swaps::Swaps(Machine& machine) {
    const std::string table = machine.text("proc/swaps");
    for (const std::string_view line : lines(table)) {
        const std::vector<std::string_view> columns = words(line);
        if (columns.empty() || columns[0] == "Filename") continue;
        paths_.push_back(decodeOctalEscapes(columns[0]));
        blocks_.push_back(blockNameOfNode(machine, paths_.back()));
    }
    std::sort(paths_.begin(), paths_.end());
}

bool Swaps::contains(const std::string& block) const {
    return std::find(blocks_.begin(), blocks_.end(), block) != blocks_.end();
}
