#include "scanners/shared/packages/pacman.h"

#include "scanners/shared/packages/text.h"

namespace {

// A section is a line "%NAME%", then its values, a line each, then an empty line.
bool isHeading(std::string_view line) {
    return line.size() > 2 && line.front() == '%' && line.back() == '%';
}

void setField(Package& package, std::string_view heading, std::string_view value) {
    if (heading == "%NAME%") package.name = value;
    if (heading == "%VERSION%") setVersion(package, value);
    if (heading == "%BASE%") package.source = value;
    if (heading == "%DESC%") package.summary = value;
    if (heading == "%ARCH%") package.architecture = value;
    if (heading == "%PACKAGER%") package.maintainer = value;
    if (heading == "%SIZE%") package.installedBytes = parseUnsigned(value);
    if (heading == "%INSTALLDATE%") package.installTime = parseSeconds(value);
    if (heading == "%REASON%") package.automatic = value == "1";
    if (heading == "%LICENSE%") {
        if (!package.license.empty()) package.license += "; ";
        package.license += value;
    }
}

// Calls `take` with heading and value for each value.
template <typename Take>
void forEachValue(std::string_view text, Take take) {
    std::string_view heading;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (line.empty()) {
            heading = {};
        } else if (heading.empty() && isHeading(line)) {
            heading = line;
        } else {
            take(heading, line);
        }
    }
}

}  // namespace

std::optional<Package> parsePacmanDesc(std::string_view text) {
    Package package;
    package.manager = "pacman";
    forEachValue(
        text, [&](std::string_view heading, std::string_view value) { setField(package, heading, value); });
    if (package.name.empty() || package.version.empty()) return std::nullopt;
    return package;
}

void forEachPacmanPath(std::string_view text, const std::function<void(std::string_view)>& owned) {
    forEachValue(text, [&](std::string_view heading, std::string_view value) {
        if (heading == "%FILES%" && value.back() != '/') owned(value);
    });
}
