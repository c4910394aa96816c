// A time zone file is read without harm whatever its bytes, and its rule gives one of its two offsets.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/posix_tz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::int64_t kTimes[] = {INT64_MIN, -1, 0, 1772323200, 1795000000, 253402300799, INT64_MAX};
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    for (const std::string_view rule : {file, timeZoneRule(file)}) {
        const auto zone = parsePosixTimeZone(rule);
        if (!zone) continue;
        for (const std::int64_t time : kTimes) {
            const std::int64_t offset = zone->offsetAt(time);
            if (offset != zone->standard && offset != zone->daylight) std::abort();
        }
    }
    return 0;
}
