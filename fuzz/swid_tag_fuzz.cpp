// A software identification tag is read without harm whatever its bytes.
#include <cstddef>
#include <cstdint>

#include "scanners/zuksw/sources/tags.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zuksw::parseTag({reinterpret_cast<const char*>(data), size});
    return 0;
}
