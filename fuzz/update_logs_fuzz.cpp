// Logs of updates are read without harm whatever their bytes, compressed or not, and no more comes out of a
// compressed one than was allowed.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "scanners/zukhw/gzip.h"
#include "scanners/zukhw/update_logs.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLimit = 100000;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto parse : {parseAptHistory, parseDpkgLog, parseDnfLog, parseYumLog, parseZyppHistory}) {
        for (const PackageUpdate& update : parse(text)) {
            if (update.name.empty()) std::abort();
        }
    }
    std::string whole;
    gunzip(text, kLimit, &whole);
    if (whole.size() > kLimit) std::abort();
    return 0;
}
