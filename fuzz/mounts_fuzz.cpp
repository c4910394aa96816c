// The table of mounts is read without harm whatever its bytes; every mount has a place.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zuksw/walk/mounts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto mounts = zuksw::parseMounts(text);
    if (mounts.size() > static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1)
        std::abort();
    for (const zuksw::Mount& mount : mounts) {
        if (mount.point.empty() || !zuksw::isAtOrBelow(mount.point, "")) std::abort();
    }
    return 0;
}
