// Any bytes are searched for a serial number without harm, and what is found lies within them.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/pci_vpd.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string_view serial = pciSerialNumber(bytes);
    if (serial.empty()) return 0;
    if (serial.data() < bytes.data() || serial.data() + serial.size() > bytes.data() + size) std::abort();
    return 0;
}
