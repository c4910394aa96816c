// Manifests of profiles are read without harm whatever their bytes, and no package lacks its name.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/profile_manifests.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto parse : {parseNixManifest, parseGuixManifest}) {
        const auto packages = parse(text);
        if (!packages) continue;
        for (const Package& package : *packages) {
            if (package.name.empty()) std::abort();
        }
    }
    return 0;
}
