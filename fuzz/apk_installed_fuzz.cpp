// apk's database: packages and paths.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "scanners/shared/packages/apk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const Package& package : parseApkInstalled(text).packages) {
        if (package.name.empty() || package.version.empty()) std::abort();
    }
    std::size_t length = 0;
    forEachApkPath(text, [&](const std::string& path, std::string_view package) {
        length += path.size() + package.size();
    });
    return 0;
}
