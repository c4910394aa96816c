#pragma once

#include <string>
#include <string_view>
#include <vector>

// A text file of names by numbers (pci.ids, usb.ids): lines "1af4  Red Hat, Inc.", below them, after a tab
// each, "1000  Virtio network device", and after two tabs "1af4 0001  Subsystem". Classes begin with "C ".
class IdsFile {
  public:
    explicit IdsFile(std::string text);
    IdsFile(const IdsFile&) = delete;  // the blocks point into it
    IdsFile& operator=(const IdsFile&) = delete;

    // The name of the top line with that key ("1af4", "C 03"), or empty.
    std::string_view name(std::string_view key) const;
    // The name of the line below it, and of the line below that.
    std::string_view name(std::string_view key, std::string_view second) const;
    std::string_view name(std::string_view key, std::string_view second, std::string_view third) const;

  private:
    // A top line and all lines below it.
    struct Block {
        std::string_view key;
        std::string_view text;
    };

    std::string_view block(std::string_view key) const;

    std::string text_;
    std::vector<Block> blocks_;  // by key
};
