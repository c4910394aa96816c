#include "scanners/zuksw/index/string_table.h"

namespace zuksw {

void StringTable::add(std::string_view key, std::uint32_t number) {
    ByteHash hash;
    for (const char c : key) hash.add(c);
    entries_.push_back({hash.value(), pool_.size(), static_cast<std::uint32_t>(key.size()), number});
    pool_ += key;
}

void StringTable::build() {
    std::size_t slots = 16;
    while (slots < entries_.size() * 2) slots *= 2;
    table_.assign(slots, kNone);
    tableMask_ = slots - 1;
    filter_.assign(slots / 16, 0);  // 8 to 16 bits for each key
    filterMask_ = filter_.size() - 1;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const std::uint64_t hash = entries_[i].hash;
        filter_[(hash >> 12U) & filterMask_] |= filterBits(hash);
        std::size_t slot = (hash >> 20U) & tableMask_;
        while (table_[slot] != kNone) slot = (slot + 1) & tableMask_;
        table_[slot] = static_cast<std::uint32_t>(i);
    }
}

}  // namespace zuksw
