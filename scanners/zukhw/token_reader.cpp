#include "scanners/zukhw/token_reader.h"

#include <algorithm>

Token TokenReader::next() {
    constexpr std::string_view kBlanks = " \t\r\n";
    constexpr std::string_view kEnds = " \t\r\n()[]{}\"=;";
    text_.remove_prefix(std::min(text_.find_first_not_of(kBlanks), text_.size()));
    if (text_.empty()) return {};
    const char first = text_[0];
    if (first == '"') return {Token::Kind::String, takeString()};
    const std::size_t length = std::max<std::size_t>(1, std::min(text_.find_first_of(kEnds), text_.size()));
    const std::string word(text_.substr(0, length));
    text_.remove_prefix(length);
    if (word.find_first_of("([{") == 0) {
        ++depth_;
        return {Token::Kind::Open, word};
    }
    if (word.find_first_of(")]}") != 0) return {Token::Kind::Word, word};
    depth_ -= std::min<std::size_t>(depth_, 1);
    return {Token::Kind::Close, word};
}

std::string TokenReader::takeString() {
    std::string value;
    std::size_t at = 1;
    for (; at < text_.size() && text_[at] != '"'; ++at) {
        if (text_[at] == '\\' && at + 1 < text_.size()) ++at;
        value += text_[at];
    }
    text_.remove_prefix(std::min(at + 1, text_.size()));
    return value;
}
