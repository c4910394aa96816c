#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// A bit map as the kernel writes what an input device can do: words in hex, the highest one first, whose
// width is that of a long for whoever read the file.
class InputBits {
  public:
    // wordBits: 32 or 64. Text that is no bit map has no bit set.
    explicit InputBits(std::string_view text = "", unsigned wordBits = 64);

    bool has(unsigned bit) const;
    // How many of the bits from `first` to `last` are set.
    unsigned count(unsigned first, unsigned last) const;
    bool hasAll(unsigned first, unsigned last) const { return count(first, last) == last - first + 1; }

  private:
    unsigned wordBits_;
    std::vector<std::uint64_t> words_;  // lowest first
};

// Whether the text has a word that only fits in 64 bits.
bool hasWideWords(std::string_view text);
