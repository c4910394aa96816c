#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "scanners/shared/random_access.h"

// A long text file, piece by piece, so that it is never in memory as a whole. Every piece but the last ends
// with the separator, and is as long as a buffer allows.
class TextPieces {
  public:
    // The file must outlive it.
    TextPieces(const RandomAccess& file, std::string_view separator) : file_(file), separator_(separator) {}

    // Goes to the next piece; false at the end of the file, or when it cannot be read any further.
    bool next();

    std::string_view text() const { return text_; }
    std::uint64_t offset() const { return offset_; }  // where it begins in the file

  private:
    const RandomAccess& file_;
    std::string separator_;
    std::string text_;
    std::uint64_t offset_ = 0;
};
