// The table of mounts is read without harm whatever its bytes; each line is a mount or counted as broken.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/mountinfo.h"
#include "scanners/zukhw/source_log.h"
#include "scanners/zukhw/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    SourceLog log;
    const auto mounts = parseMountinfo(text, &log);
    if (mounts.size() + log.malformedCount() != lines(text).size()) std::abort();
    const bool rooted = std::all_of(mounts.begin(), mounts.end(),
                                    [](const Mount& mount) { return startsWith(mount.point, "/"); });
    if (!rooted) std::abort();
    return 0;
}
