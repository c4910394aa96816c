// A configuration is read without harm whatever its bytes, and no setting leaves its bounds.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zuksw/setup/configuration.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zuksw::Configuration configuration;
    zuksw::Events events(1000);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!zuksw::readConfiguration(bytes, &configuration, &events).empty()) return 0;
    if (configuration.limits.threads > 64 || configuration.limits.nice > 39) std::abort();
    if (configuration.archive.maxDepth > 16 || configuration.archive.maxRatio == 0) std::abort();
    const std::string& prefix = configuration.system.prefix;
    if (!prefix.empty() && prefix[0] != '/') std::abort();
    events.toXml();
    return 0;
}
