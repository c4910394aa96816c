// dpkg's texts are read without harm whatever their bytes; every package that is listed has a name.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/shared/packages/dpkg.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const PackageList& list : {parseDpkgStatus(text), parseDpkgControl(text)}) {
        for (const Package& package : list.packages) {
            if (package.name.empty() || (filesArePresent(package.state) && package.version.empty()))
                std::abort();
        }
        if (list.broken > 0 && list.firstBroken > size) std::abort();
    }
    const AutomaticPackages automatic(text);
    for (const Package& package : parseDpkgControl(text).packages) automatic.contains(package);
    return 0;
}
