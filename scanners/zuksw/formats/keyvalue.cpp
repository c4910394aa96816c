#include <algorithm>
#include <string>

#include "scanners/shared/packages/text.h"
#include "scanners/zuksw/formats/extractors.h"

namespace zuksw {

namespace {

constexpr std::string_view kExport = "export ";

// Inside double quotes a backslash takes the meaning only from these.
bool isEscapable(char c) {
    return c == '"' || c == '\\' || c == '$' || c == '`';
}

// Removes quotes and a comment as a shell does; nothing when a quote is not closed on its line. Blanks
// between words stay, since many files that no shell reads are written so.
class Unquoter {
  public:
    explicit Unquoter(std::string_view text) : rest_(text) {}

    std::optional<std::string> run() {
        while (!rest_.empty() && !atComment()) {
            const char c = take();
            if (c == '\'' || c == '"') {
                if (!quoted(c)) return std::nullopt;
            } else if (c == '\\' && !rest_.empty()) {
                keep(take());
            } else if (c == ' ' || c == '\t' || c == '\r') {
                value_ += c;
            } else {
                keep(c);
            }
        }
        value_.resize(kept_);  // blanks at the end were not quoted
        return value_;
    }

  private:
    bool atComment() const { return rest_.front() == '#' && value_.size() > kept_; }

    char take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }
    void keep(char c) {
        value_ += c;
        kept_ = value_.size();
    }
    bool quoted(char quote) {
        while (!rest_.empty()) {
            const char c = take();
            if (c == quote) {
                kept_ = value_.size();
                return true;
            }
            const bool escape = quote == '"' && c == '\\' && !rest_.empty() && isEscapable(rest_.front());
            value_ += escape ? take() : c;
        }
        return false;
    }

    std::string_view rest_;
    std::string value_;
    std::size_t kept_ = 0;  // length of the value up to the last character that is no bare blank
};

}  // namespace

std::optional<std::string> shellValue(std::string_view text) {
    return Unquoter(text).run();
}

Values extractKeyValue(std::string_view text, std::string_view key) {
    Values values;
    while (!text.empty()) {
        std::string_view line = trimBlanks(takeLine(text));
        if (line.substr(0, kExport.size()) == kExport) line = trimBlanks(line.substr(kExport.size()));
        const auto equals = line.find('=');
        if (equals == std::string_view::npos || line.substr(0, equals) != key) continue;
        if (std::optional<std::string> value = shellValue(line.substr(equals + 1))) {
            values.found.push_back(std::move(*value));
        }
    }
    return values;
}

}  // namespace zuksw
