#include "scanners/zuksw/language/presets.h"

namespace zuksw {

Presets::Presets(const std::vector<Preset>& presets) {
    for (const Preset& preset : presets) entries_[{preset.guid, preset.name}] = {&preset, false};
}

const std::string* Presets::take(const std::string& guid, const std::string& name) {
    const std::lock_guard<std::mutex> lock(mutex_);
    auto found = entries_.find({guid, name});
    if (found == entries_.end()) found = entries_.find({std::string(), name});
    if (found == entries_.end()) return nullptr;
    found->second.used = true;
    return &found->second.preset->value;
}

std::vector<const Preset*> Presets::unused() const {
    std::vector<const Preset*> presets;
    for (const auto& [key, entry] : entries_) {
        if (!entry.used) presets.push_back(entry.preset);
    }
    return presets;
}

}  // namespace zuksw
