#include "scanners/zukhw/text_pieces.h"

#include <algorithm>

namespace {
constexpr std::uint64_t kPiece = std::uint64_t{64} * 1024;
}

bool TextPieces::next() {
    offset_ += text_.size();
    const std::uint64_t rest = file_.size() - offset_;
    for (std::uint64_t length = kPiece; rest != 0; length *= 2) {  // until a separator fits into it
        length = std::min(length, rest);
        if (!file_.read(offset_, static_cast<std::size_t>(length), &text_)) return false;
        if (length == rest) return true;
        const std::size_t last = text_.rfind(separator_);
        if (last == std::string::npos) continue;
        text_.resize(last + separator_.size());
        return true;
    }
    return false;
}
