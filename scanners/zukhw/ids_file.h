#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/shared/random_access.h"

// A text file of names by numbers (pci.ids, usb.ids): lines "1af4  Red Hat, Inc.", below them, after a tab
// each, "1000  Virtio network device", and after two tabs "1af4 0001  Subsystem". Classes begin with "C ".
// It has a megabyte or more, of which a machine needs a few lines: only where each top line begins is kept.
class IdsFile {
  public:
    // The file must outlive it.
    explicit IdsFile(const RandomAccess& file);

    // The name of the top line with that key ("1af4", "C 03"), or empty.
    std::string name(std::string_view key);
    // The name of the line below it, and of the line below that.
    std::string name(std::string_view key, std::string_view second);
    std::string name(std::string_view key, std::string_view second, std::string_view third);

  private:
    // A top line and all lines below it.
    struct Block {
        std::string key;
        std::uint64_t begin = 0;
        std::uint64_t end = UINT64_MAX;
    };

    void addTopLines(std::string_view text, std::uint64_t offset);
    std::string_view block(std::string_view key);

    const RandomAccess& file_;
    std::vector<Block> blocks_;
    std::string lastKey_;  // of the block that was asked for last, since many are asked for twice
    std::string lastText_;
};
