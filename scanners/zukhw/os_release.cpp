#include "scanners/zukhw/os_release.h"

#include "scanners/zukhw/text.h"

namespace {

bool isName(std::string_view name) {
    constexpr std::string_view kAllowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    return !name.empty() && name.find_first_not_of(kAllowed) == std::string_view::npos;
}

// Takes the shell quoting off one word. What follows a blank outside quotes does not belong to it.
std::string unquote(std::string_view word) {
    constexpr std::string_view kEscapable = "\"\\$`";  // inside double quotes only these can be escaped
    std::string value;
    char quote = '\0';
    for (std::size_t i = 0; i < word.size(); ++i) {
        const char c = word[i];
        const bool last = i + 1 == word.size();
        if (quote == '\0' && (c == ' ' || c == '\t')) break;
        if (c == quote) {
            quote = '\0';
        } else if (quote == '\0' && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c == '\\' && quote != '\'' && !last &&
                   (quote == '\0' || kEscapable.find(word[i + 1]) != std::string_view::npos)) {
            value += word[++i];
        } else {
            value += c;
        }
    }
    return value;
}

}  // namespace

std::map<std::string, std::string> parseOsRelease(std::string_view text) {
    std::map<std::string, std::string> values;
    for (std::string_view line : lines(text)) {
        line = trim(line);
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || !isName(line.substr(0, equals))) continue;
        values[std::string(line.substr(0, equals))] = unquote(line.substr(equals + 1));
    }
    return values;
}
