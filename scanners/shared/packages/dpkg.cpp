#include "scanners/shared/packages/dpkg.h"

#include <algorithm>

#include "scanners/shared/packages/deb822.h"
#include "scanners/shared/packages/status_file.h"

namespace {

// A package without a Source field is built from the source of its own name.
constexpr StatusDialect kStatus = {"dpkg", true, true, 1024, true};
constexpr StatusDialect kControl = {"dpkg", false, true, 1024, false};
constexpr std::size_t kUsualState = 60;  // bytes of a paragraph of apt's

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

StatusReader readDpkgStatus(std::string_view text) {
    return {text, kStatus};
}

PackageList parseDpkgStatus(std::string_view text) {
    return parseStatusFile(text, kStatus);
}

PackageList parseDpkgControl(std::string_view text) {
    return parseStatusFile(text, kControl);
}

// In an order that most names can be told apart in without looking at them.
bool AutomaticPackages::Entry::operator<(const Entry& other) const {
    if (name.size() != other.name.size()) return name.size() < other.name.size();
    if (const int order = name.compare(other.name); order != 0) return order < 0;
    return architecture < other.architecture;
}

AutomaticPackages::AutomaticPackages(std::string_view aptStates) {
    using Item = Deb822Reader::Item;
    entries_.reserve(aptStates.size() / kUsualState);
    Deb822Reader reader(aptStates);
    AptState state;
    for (Item item = reader.next(); item != Item::End; item = reader.next()) {
        if (item == Item::Field) setField(state, reader.name(), reader.value());
        if (item != Item::EndOfParagraph) continue;
        if (state.automatic) entries_.push_back({state.name, state.architecture});
        state = AptState();
    }
    std::sort(entries_.begin(), entries_.end());
}

bool AutomaticPackages::contains(const Package& package) const {
    // Of packages for all architectures apt writes the machine's own.
    const bool any = package.architecture == "all";
    const Entry wanted{package.name, any ? std::string_view() : package.architecture};
    const auto found = std::lower_bound(entries_.begin(), entries_.end(), wanted);
    return found != entries_.end() && found->name == wanted.name &&
           (any || found->architecture == wanted.architecture);
}
