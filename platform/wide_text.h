#pragma once

#include <string_view>

#include "platform/arena.h"

// Writes texts, one after the other, to where they stay: the free end of an arena, or a block of its own
// for a long one. Nothing else may be allocated from the arena between a text's first characters and its
// finish(). Failed allocations throw std::bad_alloc and leave the text as it was.
class WideText {
  public:
    explicit WideText(Arena& arena) noexcept : arena_(arena) {}

    // Adds UTF-8 characters.
    void add(std::string_view utf8);
    // Ends the text and returns it, zero-terminated; it lives as long as the arena.
    const wchar_t* finish();

  private:
    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
    void makeRoom(std::size_t characters);
    void moveToNewBlock(std::size_t bytes);
    void moveToOwnBlock(std::size_t bytes);

    Arena& arena_;
    Arena::Block own_;  // holds the text once it is long
    wchar_t* begin_ = nullptr;
    wchar_t* end_ = nullptr;
    wchar_t* limit_ = nullptr;
};
