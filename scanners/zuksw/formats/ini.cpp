#include "scanners/shared/packages/text.h"
#include "scanners/zuksw/formats/extractors.h"

namespace zuksw {

Values extractIni(std::string_view text, std::optional<std::string_view> section, std::string_view key) {
    Values values;
    std::string_view current;
    while (!text.empty()) {
        const std::string_view line = trimBlanks(takeLine(text));
        if (line.empty() || line.front() == ';' || line.front() == '#') continue;
        if (line.front() == '[') {
            if (const auto end = line.find(']'); end != std::string_view::npos)
                current = line.substr(1, end - 1);
            continue;
        }
        if (section && current != *section) continue;
        const auto separator = line.find_first_of("=:");
        if (separator == std::string_view::npos || trimBlanks(line.substr(0, separator)) != key) continue;
        values.found.emplace_back(trimBlanks(line.substr(separator + 1)));
    }
    return values;
}

}  // namespace zuksw
