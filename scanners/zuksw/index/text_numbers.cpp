#include "scanners/zuksw/index/text_numbers.h"

#include <functional>

namespace zuksw {

// Where the text stands, or where it would. The table is never full.
std::size_t TextNumbers::slotOf(std::string_view text, std::size_t hash) const {
    const std::size_t mask = table_.size() - 1;
    std::size_t slot = hash & mask;
    for (; table_[slot] != kNone; slot = (slot + 1) & mask) {
        const Entry& entry = entries_[table_[slot]];
        if (entry.hash == hash && std::string_view(pool_).substr(entry.offset, entry.length) == text) break;
    }
    return slot;
}

void TextNumbers::grow() {
    table_.assign(table_.empty() ? 64 : table_.size() * 4, kNone);
    const std::size_t mask = table_.size() - 1;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        std::size_t slot = entries_[i].hash & mask;
        while (table_[slot] != kNone) slot = (slot + 1) & mask;
        table_[slot] = static_cast<std::uint32_t>(i);
    }
}

std::uint32_t TextNumbers::add(std::string_view text) {
    if (entries_.size() * 2 >= table_.size()) grow();
    const std::size_t hash = std::hash<std::string_view>()(text);
    std::uint32_t& number = table_[slotOf(text, hash)];
    if (number != kNone) return number;
    number = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back(
        {hash, static_cast<std::uint32_t>(pool_.size()), static_cast<std::uint32_t>(text.size())});
    pool_ += text;
    return number;
}

std::optional<std::uint32_t> TextNumbers::find(std::string_view text) const {
    if (table_.empty()) return std::nullopt;
    const std::uint32_t number = table_[slotOf(text, std::hash<std::string_view>()(text))];
    if (number == kNone) return std::nullopt;
    return number;
}

}  // namespace zuksw
