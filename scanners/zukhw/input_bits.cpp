#include "scanners/zukhw/input_bits.h"

#include <algorithm>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::size_t kMaxWords = 64;  // keys, the longest of the maps, have 24 of 32 bits

}  // namespace

InputBits::InputBits(std::string_view text, unsigned wordBits) : wordBits_(wordBits) {
    const std::vector<std::string_view> groups = words(text);
    if (groups.size() > kMaxWords) return;
    for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
        words_.push_back(parseHex(*group).value_or(0));
    }
}

bool InputBits::has(unsigned bit) const {
    const std::size_t word = bit / wordBits_;
    return word < words_.size() && (words_[word] >> bit % wordBits_ & 1U) != 0;
}

unsigned InputBits::count(unsigned first, unsigned last) const {
    unsigned set = 0;
    for (unsigned bit = first; bit <= last; ++bit) set += has(bit) ? 1 : 0;
    return set;
}

bool hasWideWords(std::string_view text) {
    constexpr std::size_t kDigitsOf32 = 8;
    const std::vector<std::string_view> groups = words(text);
    return std::any_of(groups.begin(), groups.end(),
                       [](std::string_view group) { return group.size() > kDigitsOf32; });
}
