#include "scanners/shared/packages/snap.h"

#include "scanners/shared/affix.h"
#include "scanners/shared/packages/text.h"

namespace {

std::string_view withoutQuotes(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

// The tool that packs snaps writes what we want as plain lines without indentation.
Package parseSnapYaml(std::string_view text) {
    Package package;
    bool inArchitectures = false;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        const std::string_view item = trimBlanks(line);
        if (inArchitectures && startsWith(item, "- ")) {
            // A snap for several machines is the same for each.
            if (package.architecture.empty())
                package.architecture = withoutQuotes(trimBlanks(item.substr(2)));
            continue;
        }
        const auto colon = line.find(':');
        if (colon == std::string_view::npos) continue;
        const std::string_view key = line.substr(0, colon);
        const std::string_view value = withoutQuotes(trimBlanks(line.substr(colon + 1)));
        inArchitectures = key == "architectures";
        if (key == "name") package.name = value;
        if (key == "version") package.version = package.upstream = value;
        if (key == "summary") package.summary = value;
        if (key == "license") package.license = value;
    }
    return package;
}
