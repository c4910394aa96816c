#include "scanners/shared/packages/dpkg.h"

#include <algorithm>

#include "scanners/shared/packages/deb822.h"
#include "scanners/shared/packages/status_file.h"

namespace {

constexpr StatusDialect kStatus = {"dpkg", true, 1024, true};
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

}  // namespace

PackageList parseDpkgStatus(std::string_view text) {
    return withSources(parseStatusFile(text, kStatus));
}

PackageList parseDpkgControl(std::string_view text) {
    return withSources(parseStatusFile(text, kControl));
}

std::vector<std::pair<std::string_view, std::string_view>> parseAptAutomatic(std::string_view text) {
    using Item = Deb822Reader::Item;
    std::vector<std::pair<std::string_view, std::string_view>> automatic;
    Deb822Reader reader(text);
    AptState state;
    for (Item item = reader.next(); item != Item::End; item = reader.next()) {
        if (item == Item::Field) setField(state, reader.name(), reader.value());
        if (item != Item::EndOfParagraph) continue;
        if (state.automatic) automatic.emplace_back(state.name, state.architecture);
        state = AptState();
    }
    std::sort(automatic.begin(), automatic.end());
    return automatic;
}
