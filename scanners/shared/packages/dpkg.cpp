#include "scanners/shared/packages/dpkg.h"

#include <algorithm>
#include <unordered_map>

#include "scanners/shared/packages/deb822.h"
#include "scanners/shared/packages/status_file.h"

namespace {

constexpr StatusDialect kStatus = {"dpkg", true, 1024, true};
constexpr std::size_t kUsualState = 60;  // bytes of a paragraph of apt's
constexpr StatusDialect kControl = {"dpkg", false, 1024, false};

// A package without a Source field is built from the source of its own name.
PackageList withSources(PackageList list) {
    for (Package& package : list.packages) {
        if (package.source.empty()) package.source = package.name;
    }
    return list;
}

struct AptState {
    std::string_view name;
    std::string_view architecture;
    bool automatic = false;
};

void setField(AptState& state, std::string_view name, std::string_view value) {
    if (name == "Package") state.name = value;
    if (name == "Architecture") state.architecture = value;
    if (name == "Auto-Installed") state.automatic = value == "1";
}

// Architectures by names; they point into the text.
using AutomaticNames = std::unordered_multimap<std::string_view, std::string_view>;

AutomaticNames automaticNames(std::string_view aptStates) {
    using Item = Deb822Reader::Item;
    AutomaticNames names;
    names.reserve(aptStates.size() / kUsualState);
    Deb822Reader reader(aptStates);
    AptState state;
    for (Item item = reader.next(); item != Item::End; item = reader.next()) {
        if (item == Item::Field) setField(state, reader.name(), reader.value());
        if (item != Item::EndOfParagraph) continue;
        if (state.automatic) names.emplace(state.name, state.architecture);
        state = AptState();
    }
    return names;
}

}  // namespace

PackageList parseDpkgStatus(std::string_view text) {
    return withSources(parseStatusFile(text, kStatus));
}

PackageList parseDpkgControl(std::string_view text) {
    return withSources(parseStatusFile(text, kControl));
}

void markAutomatic(std::string_view aptStates, std::vector<Package>& packages) {
    const AutomaticNames names = automaticNames(aptStates);
    for (Package& package : packages) {
        // Of packages for all architectures apt writes the machine's own.
        const bool any = package.architecture == "all";
        const auto [begin, end] = names.equal_range(package.name);
        package.automatic = std::any_of(
            begin, end, [&](const auto& entry) { return any || entry.second == package.architecture; });
    }
}
