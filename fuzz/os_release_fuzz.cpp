// Files of shell assignments are read without harm whatever their bytes; names are names.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/os_release.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto& [name, value] : parseOsRelease({reinterpret_cast<const char*>(data), size})) {
        if (name.empty() || name.find_first_of(" =\n") != std::string::npos || value.size() > size)
            std::abort();
    }
    return 0;
}
