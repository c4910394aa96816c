#include <algorithm>
#include <charconv>
#include <string>

#include "scanners/zuksw/formats/extractors.h"
#include "scanners/zuksw/formats/utf8.h"

namespace zuksw {

namespace {

constexpr std::string_view kBlanks = " \t\f";
constexpr std::string_view kBlanksAndEnds = " \t\f\r\n";

bool isEscaped(std::string_view text, std::size_t at) {
    std::size_t backslashes = 0;
    while (backslashes < at && text[at - backslashes - 1] == '\\') ++backslashes;
    return backslashes % 2 == 1;
}

void skipBlanks(std::string_view& text, std::string_view blanks) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

// A line with the lines that it goes on with, joined: a backslash before the line end takes the end and the
// blanks that begin the next line with it. Empty at the end of the text and for comments.
std::string takeLogicalLine(std::string_view& text) {
    skipBlanks(text, kBlanksAndEnds);
    const bool comment = !text.empty() && (text.front() == '#' || text.front() == '!');
    std::string line;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find_first_of("\r\n"));
        text.remove_prefix(part.size());
        const bool continues = !comment && isEscaped(part, part.size());
        if (!comment) line.append(part.substr(0, part.size() - (continues ? 1 : 0)));
        if (text.substr(0, 2) == "\r\n") text.remove_prefix(1);
        if (!text.empty()) text.remove_prefix(1);
        if (!continues) break;
        skipBlanks(text, kBlanks);
    }
    return line;
}

std::optional<std::uint32_t> takeHex4(std::string_view& text) {
    std::uint32_t unit = 0;
    if (text.size() < 4) return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + 4, unit, 16);
    if (error != std::errc() || end != text.data() + 4) return std::nullopt;
    text.remove_prefix(4);
    return unit;
}

// The four digits of \uXXXX, and of the \uXXXX after it when the two are a surrogate pair.
std::optional<std::uint32_t> takeCodePoint(std::string_view& text) {
    const std::optional<std::uint32_t> high = takeHex4(text);
    if (!high || *high < 0xD800 || *high > 0xDBFF || text.substr(0, 2) != "\\u") return high;
    std::string_view rest = text.substr(2);
    const std::optional<std::uint32_t> low = takeHex4(rest);
    if (!low || *low < 0xDC00 || *low > 0xDFFF) return high;
    text = rest;
    return 0x10000 + ((*high - 0xD800) << 10) + (*low - 0xDC00);
}

// Nothing when a \u lacks its digits.
std::optional<std::string> unescape(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        char c = text.front();
        text.remove_prefix(1);
        if (c != '\\' || text.empty()) {
            plain += c;
            continue;
        }
        c = text.front();
        text.remove_prefix(1);
        if (c == 'u') {
            const std::optional<std::uint32_t> codePoint = takeCodePoint(text);
            if (!codePoint) return std::nullopt;
            appendUtf8(plain, *codePoint);
            continue;
        }
        const auto letter = std::string_view("tnrf").find(c);
        plain += letter == std::string_view::npos ? c : "\t\n\r\f"[letter];
    }
    return plain;
}

// Splits a line at the first blank, `=` or `:` that is not escaped; blanks around the separator go.
std::pair<std::string_view, std::string_view> splitLine(std::string_view line) {
    std::size_t end = 0;
    while (end < line.size() && std::string_view(" \t\f=:").find(line[end]) == std::string_view::npos) {
        end += line[end] == '\\' ? 2 : 1;
    }
    end = std::min(end, line.size());
    std::string_view rest = line.substr(end);
    skipBlanks(rest, kBlanks);
    if (!rest.empty() && (rest.front() == '=' || rest.front() == ':')) {
        rest.remove_prefix(1);
        skipBlanks(rest, kBlanks);
    }
    return {line.substr(0, end), rest};
}

}  // namespace

Values extractProperties(std::string_view text, std::string_view key) {
    Values values;
    while (!text.empty()) {
        const std::string line = takeLogicalLine(text);
        const auto [name, value] = splitLine(line);
        if (line.empty() || unescape(name) != key) continue;
        if (std::optional<std::string> plain = unescape(value)) values.found.push_back(std::move(*plain));
    }
    return values;
}

}  // namespace zuksw
