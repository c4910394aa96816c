// Any bytes are read as each of a disk's pages without harm, and what is found is no longer than they are.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/vpd.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view page(reinterpret_cast<const char*>(data), size);
    const std::string_view serial = vpdSerial(page);
    if (!serial.empty() &&
        (serial.data() < page.data() || serial.data() + serial.size() > page.data() + size)) {
        std::abort();
    }
    if (vpdName(page).size() > 4 + 2 * size) std::abort();
    const auto disk = vpdAtaIdentity(page);
    if (disk && (disk->serial.size() > 20 || disk->revision.size() > 8)) std::abort();
    const auto rotations = rotationRpm(vpdRotation(page));
    if (rotations && *rotations < 2) std::abort();
    return 0;
}
