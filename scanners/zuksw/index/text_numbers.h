#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** Numbers texts from 0 in the order in which they come; equal texts have one number. */
class TextNumbers {
  public:
    /** The text's number; when it is new, that is what size() was. */
    std::uint32_t add(std::string_view text);
    /** Nothing for a text that was never added. */
    std::optional<std::uint32_t> find(std::string_view text) const;

    std::size_t size() const { return entries_.size(); }

  private:
    static constexpr std::uint32_t kNone = UINT32_MAX;
    struct Entry {
        std::size_t offset;
        std::size_t length;
    };
    // A part of the hash stands beside the number, so that a text is looked at only when it is the one.
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = kNone;
    };
    void grow();
    std::size_t slotOf(std::string_view text, std::uint32_t hash) const;

    std::string pool_;  // every text
    std::vector<Entry> entries_;
    std::vector<Slot> table_;  // by hash; the next free place after a collision
};

}  // namespace zuksw
