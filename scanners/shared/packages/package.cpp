#include "scanners/shared/packages/package.h"

#include <algorithm>

namespace {

// In the order of PackageState.
constexpr std::string_view kStateNames[] = {"not-installed",    "config-files",    "half-installed",
                                            "unpacked",         "half-configured", "triggers-awaited",
                                            "triggers-pending", "installed"};

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::string_view packageStateName(PackageState state) {
    return kStateNames[static_cast<int>(state)];
}

std::optional<PackageState> packageStateByName(std::string_view name) {
    const auto* found = std::find(std::begin(kStateNames), std::end(kStateNames), name);
    if (found == std::end(kStateNames)) return std::nullopt;
    return static_cast<PackageState>(found - std::begin(kStateNames));
}

bool filesArePresent(PackageState state) {
    return state != PackageState::NotInstalled && state != PackageState::ConfigFiles;
}

void setVersion(Package& package, std::string_view version) {
    package.version = version;
    if (const auto colon = version.find(':');
        colon != std::string_view::npos && isNumber(version.substr(0, colon))) {
        package.epoch = version.substr(0, colon);
        version.remove_prefix(colon + 1);
    }
    const auto hyphen = version.rfind('-');
    package.upstream = version.substr(0, hyphen);
    if (hyphen != std::string_view::npos) package.revision = version.substr(hyphen + 1);
}
