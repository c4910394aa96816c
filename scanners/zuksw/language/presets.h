#pragma once

#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "scanners/zuksw/setup/configuration.h"

namespace zuksw {

/** The caller's presets, ready to be looked up, and which of them were taken. Any thread may take. */
class Presets {
  public:
    /** Of two with equal guid and name the later wins. The presets must outlive this. */
    explicit Presets(const std::vector<Preset>& presets);

    /** The value for an Input of one signature, or null. A preset with just its guid beats a global one. */
    const std::string* take(const std::string& guid, const std::string& name);
    /** Those that no Input took, those that were overwritten left out. */
    std::vector<const Preset*> unused() const;

  private:
    struct Entry {
        const Preset* preset = nullptr;
        bool used = false;
    };
    std::mutex mutex_;
    std::map<std::pair<std::string, std::string>, Entry> entries_;  // by guid and name
};

}  // namespace zuksw
