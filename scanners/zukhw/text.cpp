#include "scanners/zukhw/text.h"

#include <algorithm>
#include <ctime>
#include <optional>

#include "scanners/shared/xml_text.h"

namespace {

constexpr std::string_view kBlanks = " \t\n\r\v\f";

// Asked for every byte of nearly every file: a search in kBlanks costs several times as much.
bool isBlank(char c) {
    return c == ' ' || ('\t' <= c && c <= '\r');
}

std::optional<std::tm> utcParts(long long seconds) {
    constexpr long long kFirst = -62135596800;  // 0001-01-01
    constexpr long long kLast = 253402300799;   // 9999-12-31
    if (seconds < kFirst || seconds > kLast) return std::nullopt;
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts{};
    ::gmtime_r(&time, &parts);
    return parts;
}

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string dateOf(const std::tm& parts) {
    const int year = parts.tm_year + 1900;
    return twoDigits(year / 100) + twoDigits(year % 100) + '-' + twoDigits(parts.tm_mon + 1) + '-' +
           twoDigits(parts.tm_mday);
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

}  // namespace

bool isClean(std::string_view bytes) {
    bool afterBlank = true;  // so a blank at the start is unclean
    for (const char c : bytes) {
        if (c < ' ' || c > '~' || (c == ' ' && afterBlank)) return false;
        afterBlank = c == ' ';
    }
    return !afterBlank;
}

std::string cleanText(std::string_view bytes) {
    if (isClean(bytes)) return std::string(bytes);
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
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        if (text.empty()) return found;
        const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
        found.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
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

std::string utcDate(long long seconds) {
    const std::optional<std::tm> parts = utcParts(seconds);
    return parts ? dateOf(*parts) : "";
}

std::string utcTime(long long seconds) {
    const std::optional<std::tm> parts = utcParts(seconds);
    if (!parts) return "";
    return dateOf(*parts) + 'T' + twoDigits(parts->tm_hour) + ':' + twoDigits(parts->tm_min) + ':' +
           twoDigits(parts->tm_sec) + 'Z';
}

std::string join(const std::vector<std::string>& items, std::string_view separator) {
    std::string joined;
    for (const std::string& item : items) {
        if (!joined.empty()) joined += separator;
        joined += item;
    }
    return joined;
}
