#pragma once

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
        std::size_t hash;
        std::uint32_t offset;
        std::uint32_t length;
    };
    void grow();
    std::size_t slotOf(std::string_view text, std::size_t hash) const;

    std::string pool_;  // every text
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> table_;  // by hash; the next free place after a collision
};

}  // namespace zuksw
