#include "scanners/zukhw/text.h"

#include <algorithm>

#include "scanners/shared/xml_text.h"
#include "scanners/zukhw/calendar.h"

namespace {

// Asked for every byte of nearly every file: a search in a text of them costs several times as much.
bool isBlank(char c) {
    return c == ' ' || ('\t' <= c && c <= '\r');
}

// Writes two digits into `text` from `at` on.
void putTwoDigits(std::int64_t number, std::size_t at, std::string* text) {
    (*text)[at] = static_cast<char>('0' + number / 10);
    (*text)[at + 1] = static_cast<char>('0' + number % 10);
}

bool isBetweenYears1And9999(std::int64_t seconds) {
    return -62135596800 <= seconds && seconds <= 253402300799;
}

std::string collapseBlanks(std::string_view text) {
    std::string out;
    bool pendingBlank = false;
    for (const char c : text) {
        if (isBlank(c)) {
            pendingBlank = !out.empty();
            continue;
        }
        if (pendingBlank) out += ' ';
        pendingBlank = false;
        out += c;
    }
    return out;
}

// The signs of every byte's kind, in a table because nearly all that is reported is looked at.
class ByteKinds {
  public:
    enum Sign : unsigned char { kBlank = 1, kEscaped = 2, kStrange = 4 };

    constexpr ByteKinds() {
        for (int c = 0; c < 256; ++c) signs_[c] = c < ' ' || c > '~' ? kStrange : 0;
        for (const char c : {'&', '<', '>', '"'}) signs_[static_cast<unsigned char>(c)] = kEscaped;
        signs_[static_cast<unsigned char>(' ')] = kBlank;
    }
    constexpr unsigned operator[](char c) const { return signs_[static_cast<unsigned char>(c)]; }

  private:
    unsigned char signs_[256] = {};
};

}  // namespace

TextKind kindOfText(std::string_view bytes) {
    static constexpr ByteKinds kKinds;
    unsigned before = ByteKinds::kBlank;  // so a blank at the start is one too many
    unsigned seen = 0;
    unsigned twice = 0;
    for (const char c : bytes) {
        const unsigned signs = kKinds[c];
        seen |= signs;
        twice |= signs & before;
        before = signs;
    }
    if (((seen & ByteKinds::kStrange) | ((twice | before) & ByteKinds::kBlank)) != 0)
        return TextKind::Unclean;
    return (seen & ByteKinds::kEscaped) != 0 ? TextKind::Clean : TextKind::Plain;
}

std::string cleanText(std::string_view bytes) {
    if (kindOfText(bytes) != TextKind::Unclean) return std::string(bytes);
    std::string blanked(bytes);  // vertical tabs and form feeds are blanks, and no XML characters
    std::replace_if(blanked.begin(), blanked.end(), isBlank, ' ');
    return collapseBlanks(toXmlCharacters(blanked));
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> parts = split(text, '\n');
    if (parts.back().empty()) parts.pop_back();
    for (std::string_view& line : parts) {
        if (endsWith(line, "\r")) line.remove_suffix(1);
    }
    return parts;
}

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> found;
    for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end) {
        while (begin < text.size() && isBlank(text[begin])) ++begin;
        end = begin;
        while (end < text.size() && !isBlank(text[end])) ++end;
        if (begin != end) found.push_back(text.substr(begin, end - begin));
    }
    return found;
}

std::string_view trim(std::string_view text) {
    const auto isEdge = [](char c) { return isBlank(c) || c == '\0'; };
    while (!text.empty() && isEdge(text.front())) text.remove_prefix(1);
    while (!text.empty() && isEdge(text.back())) text.remove_suffix(1);
    return text;
}

std::string toLower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

std::string utcDate(std::int64_t seconds) {
    if (!isBetweenYears1And9999(seconds)) return "";
    const std::int64_t second = seconds % kSecondsOfDay;
    const Date date = dateOfDay(seconds / kSecondsOfDay - (second < 0 ? 1 : 0));
    std::string text = "yyyy-mm-dd";
    putTwoDigits(date.year / 100, 0, &text);
    putTwoDigits(date.year % 100, 2, &text);
    putTwoDigits(date.month, 5, &text);
    putTwoDigits(date.day, 8, &text);
    return text;
}

std::string utcTime(std::int64_t seconds) {
    if (!isBetweenYears1And9999(seconds)) return "";
    const std::int64_t second = (seconds % kSecondsOfDay + kSecondsOfDay) % kSecondsOfDay;
    std::string time = "Thh:mm:ssZ";
    putTwoDigits(second / 3600, 1, &time);
    putTwoDigits(second / 60 % 60, 4, &time);
    putTwoDigits(second % 60, 7, &time);
    return utcDate(seconds) + time;
}

std::string join(const std::vector<std::string>& items, std::string_view separator) {
    std::string joined;
    for (const std::string& item : items) {
        if (!joined.empty()) joined += separator;
        joined += item;
    }
    return joined;
}
