#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** A running hash of bytes: the hash of a prefix is a step on the way to the hash of the whole. */
class ByteHash {
  public:
    void add(char byte) { value_ = (value_ ^ static_cast<unsigned char>(byte)) * 0x100000001B3U; }
    std::uint64_t value() const { return value_ ^ (value_ >> 32U); }

  private:
    std::uint64_t value_ = 0xCBF29CE484222325U;
};

/** From texts to lists of numbers, made once and then asked very often, mostly in vain: a bit filter answers
 *  most questions without a look at the table. */
class StringTable {
  public:
    void add(std::string_view key, std::uint32_t number);
    /** Call once, after the last add(). */
    void build();

    bool empty() const { return entries_.empty(); }

    /** Calls visit(number) for each number of the key; hash is that of all bytes of the key. */
    template <typename Visit>
    void find(std::string_view key, std::uint64_t hash, Visit visit) const {
        const std::uint64_t bits = filterBits(hash);
        if ((filter_[(hash >> 12U) & filterMask_] & bits) != bits) return;
        for (std::size_t slot = (hash >> 20U) & tableMask_; table_[slot] != kNone;
             slot = (slot + 1) & tableMask_) {
            const Entry& entry = entries_[table_[slot]];
            if (entry.hash == hash && keyOf(entry) == key) visit(entry.number);
        }
    }

  private:
    static constexpr std::uint32_t kNone = UINT32_MAX;
    struct Entry {
        std::uint64_t hash;
        std::size_t offset;
        std::uint32_t length;
        std::uint32_t number;
    };
    // Two bits of one word: the filter stays small enough for a processor's own cache.
    static std::uint64_t filterBits(std::uint64_t hash) {
        return std::uint64_t{1} << (hash & 63U) | std::uint64_t{1} << (hash >> 6U & 63U);
    }
    std::string_view keyOf(const Entry& entry) const {
        return std::string_view(pool_).substr(entry.offset, entry.length);
    }

    std::string pool_;  // every key
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> table_;  // by hash; the next free place after a collision
    std::vector<std::uint64_t> filter_;
    std::size_t tableMask_ = 0;
    std::size_t filterMask_ = 0;
};

}  // namespace zuksw
