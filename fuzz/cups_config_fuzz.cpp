// Any text is read as a print server's file without harm: every queue has a name, and no address keeps a
// password that taking out once more would change.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/cups_config.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const PrintQueue& queue : parseCupsConfig({reinterpret_cast<const char*>(data), size})) {
        if (queue.name.empty()) std::abort();
        const std::string safe = withoutPassword(queue.deviceUri);
        if (withoutPassword(safe) != safe) std::abort();
    }
    return 0;
}
