#include "scanners/zukhw/text_pieces.h"

#include <algorithm>

namespace {

constexpr std::uint64_t kPiece = std::uint64_t{32} * 1024;

// Where the last separator ends; 0 when there is none. (rfind calls memcmp at each place.)
std::size_t endOfLast(std::string_view separator, std::string_view text) {
    const auto* const last = std::find_end(text.begin(), text.end(), separator.begin(), separator.end());
    return last == text.end() ? 0 : static_cast<std::size_t>(last - text.begin()) + separator.size();
}

}  // namespace

bool TextPieces::next() {
    offset_ += text_.size();
    const std::uint64_t rest = file_.size() - offset_;
    for (std::uint64_t length = kPiece; rest != 0; length *= 2) {  // until a separator fits into it
        length = std::min(length, rest);
        if (!file_.read(offset_, static_cast<std::size_t>(length), &text_)) return false;
        if (length == rest) return true;
        const std::size_t end = endOfLast(separator_, text_);
        if (end == 0) continue;
        text_.resize(end);
        return true;
    }
    return false;
}
