#include "scanners/zukhw/drm.h"

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kDirectory = "sys/class/drm";
constexpr std::string_view kCard = "card";

std::string pathOf(const std::string& name) {
    return std::string(kDirectory) + '/' + name;
}

DrmCard readCard(Machine& machine, const std::string& name) {
    DrmCard card;
    card.name = name;
    card.path = pathOf(name);
    card.pciAddress = baseName(pciAncestor(machine.link(card.path)));
    // In a copy the card may be a plain directory, with its device link kept.
    if (card.pciAddress.empty()) card.pciAddress = baseName(pciAncestor(machine.link(card.path + "/device")));
    return card;
}

}  // namespace

Drm::Drm(Machine& machine) {
    // "card0", then its connectors: "card0-DP-1".
    for (const std::string& name : machine.list(kDirectory)) {
        const std::size_t dash = name.find('-');
        const std::string card = name.substr(0, dash);
        if (!startsWith(card, kCard) || !parseDecimal(card.substr(kCard.size()))) continue;
        if (cards_.empty() || cards_.back().name != card) cards_.push_back(readCard(machine, card));
        if (dash == std::string::npos) continue;
        const std::string path = pathOf(name);
        const bool connected = machine.text(path + "/status") == "connected";
        cards_.back().connectors.push_back({name.substr(dash + 1), path, connected});
    }
}
