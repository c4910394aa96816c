#include "scanners/zuksw/index/text_numbers.h"

#include <functional>

namespace zuksw {
namespace {

std::uint32_t hashOf(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

}  // namespace

// Where the text stands, or where it would. The table is never full.
std::size_t TextNumbers::slotOf(std::string_view text, std::uint32_t hash) const {
    const std::size_t mask = table_.size() - 1;
    std::size_t slot = hash & mask;
    for (; table_[slot].number != kNone; slot = (slot + 1) & mask) {
        if (table_[slot].hash != hash) continue;
        const Entry& entry = entries_[table_[slot].number];
        if (std::string_view(pool_).substr(entry.offset, entry.length) == text) break;
    }
    return slot;
}

void TextNumbers::grow() {
    std::vector<Slot> before(table_.empty() ? 64 : table_.size() * 4);
    before.swap(table_);
    const std::size_t mask = table_.size() - 1;
    for (const Slot& old : before) {
        if (old.number == kNone) continue;
        std::size_t slot = old.hash & mask;
        while (table_[slot].number != kNone) slot = (slot + 1) & mask;
        table_[slot] = old;
    }
}

std::uint32_t TextNumbers::add(std::string_view text) {
    if (entries_.size() * 2 >= table_.size()) grow();
    const std::uint32_t hash = hashOf(text);
    Slot& slot = table_[slotOf(text, hash)];
    if (slot.number != kNone) return slot.number;
    slot = {hash, static_cast<std::uint32_t>(entries_.size())};
    entries_.push_back({pool_.size(), text.size()});
    pool_ += text;
    return slot.number;
}

std::optional<std::uint32_t> TextNumbers::find(std::string_view text) const {
    if (table_.empty()) return std::nullopt;
    const std::uint32_t number = table_[slotOf(text, hashOf(text))].number;
    if (number == kNone) return std::nullopt;
    return number;
}

}  // namespace zuksw
