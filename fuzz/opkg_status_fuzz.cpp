// The status file of opkg; every package that is listed has a name.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/shared/packages/opkg.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const PackageList list = parseOpkgStatus({reinterpret_cast<const char*>(data), size});
    for (const Package& package : list.packages) {
        if (package.name.empty()) std::abort();
    }
    if (list.firstBroken > size) std::abort();
    return 0;
}
