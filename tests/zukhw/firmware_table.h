#pragma once

#include <string>
#include <vector>

#include "scanners/zukhw/machine.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/dmidecode_text.h"

// A captured firmware table, as a machine and as dmidecode prints it.
struct FirmwareTable {
    explicit FirmwareTable(const std::string& name)
        : files(name),
          machine(files.machine()),
          blocks(readDmidecode(captureText(name + ".dmidecode34.txt"))) {}

    std::vector<DmidecodeBlock> ofType(unsigned type) const {
        std::vector<DmidecodeBlock> found;
        for (const DmidecodeBlock& block : blocks) {
            if (block.type == type) found.push_back(block);
        }
        return found;
    }

    Capture files;
    Machine machine;
    std::vector<DmidecodeBlock> blocks;
};
