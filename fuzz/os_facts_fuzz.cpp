// An os-release file makes facts without harm whatever its bytes; names are names.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "scanners/zuksw/sources/system_facts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto& [name, value] : zuksw::parseOsRelease({reinterpret_cast<const char*>(data), size})) {
        if (name.empty() || name.find_first_of("=\n") != std::string::npos || value.size() > size)
            std::abort();
    }
    return 0;
}
