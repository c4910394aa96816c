// What a snap says about itself.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "scanners/shared/packages/snap.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    parseSnapYaml({reinterpret_cast<const char*>(data), size});
    return 0;
}
