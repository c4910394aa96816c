#include "platform/wide_text.h"

#include <algorithm>
#include <cstring>

#include "platform/utf8.h"

namespace {
// Longer texts leave the arena's blocks, so that little of a block is lost when a text outgrows it.
constexpr std::size_t kLongest = std::size_t{64} << 10;
}  // namespace

void WideText::add(std::string_view utf8) {
    if (begin_ == nullptr) {
        begin_ = end_ = reinterpret_cast<wchar_t*>(arena_.freeEnd());
        limit_ = begin_ + arena_.room() / sizeof(wchar_t);
    }
    // A byte gives at most one character; the terminator needs one more.
    if (utf8.size() >= static_cast<std::size_t>(limit_ - end_)) makeRoom(utf8.size() + 1);
    end_ = decodeUtf8(utf8, end_);
}

const wchar_t* WideText::finish() {
    if (begin_ == nullptr) return L"";
    *end_ = L'\0';
    const std::size_t bytes = (size() + 1) * sizeof(wchar_t);
    wchar_t* text = begin_;
    if (own_ == nullptr) {
        arena_.allocate(bytes);
    } else {
        void* fitted = std::realloc(own_.get(), bytes);
        if (fitted != nullptr) {
            static_cast<void>(own_.release());
            own_.reset(fitted);
            text = static_cast<wchar_t*>(fitted);
        }
        arena_.adopt(std::move(own_));
    }
    begin_ = end_ = limit_ = nullptr;
    return text;
}

void WideText::makeRoom(std::size_t characters) {
    const std::size_t bytes = (size() + characters) * sizeof(wchar_t);
    if (own_ == nullptr && bytes <= kLongest) {
        moveToNewBlock(bytes);
    } else {
        moveToOwnBlock(std::max(bytes, 2 * size() * sizeof(wchar_t)));
    }
}

void WideText::moveToNewBlock(std::size_t bytes) {
    arena_.startBlock(bytes);
    auto* moved = reinterpret_cast<wchar_t*>(arena_.freeEnd());
    end_ = std::copy(begin_, end_, moved);
    begin_ = moved;
    limit_ = begin_ + arena_.room() / sizeof(wchar_t);
}

void WideText::moveToOwnBlock(std::size_t bytes) {
    const std::size_t length = size();
    const bool wasOwn = own_ != nullptr;
    void* block = std::realloc(own_.get(), bytes);
    if (block == nullptr) throw std::bad_alloc();
    static_cast<void>(own_.release());
    own_.reset(block);
    auto* moved = static_cast<wchar_t*>(block);
    if (!wasOwn) std::copy(begin_, end_, moved);
    begin_ = moved;
    end_ = begin_ + length;
    limit_ = begin_ + bytes / sizeof(wchar_t);
}
