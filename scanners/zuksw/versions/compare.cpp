#include "scanners/zuksw/versions/compare.h"

#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

namespace {

struct SchemeRow {
    std::string_view name;
    std::optional<int> (*compare)(std::string_view, std::string_view);
};

// In the order of Scheme.
constexpr SchemeRow kSchemes[] = {
    {"generic", compareGeneric}, {"deb", compareDeb},       {"rpm", compareRpm},
    {"apk", compareApk},         {"pacman", comparePacman}, {"semver", compareSemver},
    {"pep440", comparePep440},   {"maven", compareMaven},   {"gem", compareGem},
    {"number", compareNumber},   {"text", compareText},     {"textnocase", compareTextNoCase},
};

}  // namespace

std::optional<Scheme> schemeByName(std::string_view name) {
    for (const SchemeRow& row : kSchemes) {
        if (row.name == name) return static_cast<Scheme>(&row - kSchemes);
    }
    return std::nullopt;
}

std::string_view schemeName(Scheme scheme) {
    return kSchemes[static_cast<int>(scheme)].name;
}

std::optional<int> compareVersions(Scheme scheme, std::string_view a, std::string_view b) {
    return kSchemes[static_cast<int>(scheme)].compare(a, b);
}

}  // namespace zuksw
