// The blobs of such a database are together no longer than its file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/shared/packages/rpm_blobs.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::size_t length = 0;
    readRpmBdb(MemoryAccess({reinterpret_cast<const char*>(data), size}),
               [&](std::string_view blob) { length += blob.size(); });
    if (length > size) std::abort();
    return 0;
}
