// The header of one of rpm's packages.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "scanners/shared/packages/rpm_header.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view blob(reinterpret_cast<const char*>(data), size);
    const std::optional<Package> package = parseRpmHeader(blob);
    if (package && (package->name.empty() || package->version.size() < 3)) std::abort();
    forEachRpmPath(blob, [](const std::string& path) {
        if (path.size() >= PATH_MAX) std::abort();
    });
    return 0;
}
