#pragma once

#include <array>
#include <cstdint>

#include "platform/wide_text.h"

// Widens names so that equal ones share their characters, as far as they fit: it is a cache, so a file
// with very many different names, or with names made to collide, costs memory for some of them again but
// never time.
class NameCache {
  public:
    NameCache(Arena& arena, WideText& text) noexcept : arena_(arena), text_(text) {}

    // The name, widened; it lives as long as the arena.
    const wchar_t* widen(const char* name);

  private:
    struct Entry {
        const char* name;  // null: free
        const wchar_t* wide;
        std::uint32_t hash;
    };
    static constexpr std::size_t kSize = 1024;  // a power of two
    static constexpr std::size_t kReach = 4;    // entries looked at for one name

    void fill(Entry& entry, std::string_view name, std::uint32_t hash);

    Arena& arena_;
    WideText& text_;
    std::array<Entry, kSize> entries_{};
};
