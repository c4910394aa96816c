// A file of signatures is read without harm whatever its bytes. When it is not rejected, a signature is
// invalid exactly when some finding says why, and each is in one wave.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "scanners/zuksw/language/signature_set.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<zuksw::Preset> values = {{"a", "1", ""}, {"a", "2", "g"}, {"b", "/x*", "g"}};
    zuksw::PatternStore patterns(1 << 20);
    zuksw::Presets presets(values);
    const std::atomic<bool> stop{false};
    zuksw::SignatureSet set;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!set.read(bytes, &patterns, &presets, 1, stop).empty()) return 0;
    std::vector<int> errors(set.signatures().size());
    for (const zuksw::Finding& finding : set.findings()) {
        if (finding.offset > size) std::abort();
        if (finding.level == zuksw::Finding::Level::kError) ++errors.at(finding.signature);
    }
    std::vector<int> evaluations(errors.size());
    for (const std::vector<std::size_t>& wave : set.waves()) {
        for (const std::size_t index : wave) ++evaluations.at(index);
    }
    for (std::size_t i = 0; i < errors.size(); ++i) {
        if (set.signatures()[i].valid != (errors[i] == 0) || evaluations[i] != 1) std::abort();
    }
    return 0;
}
