// The first byte chooses a format, the first line is the key, the rest the text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zuksw/formats/value.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto format =
        static_cast<zuksw::ValueFormat>(data[0] % (static_cast<int>(zuksw::ValueFormat::kXml) + 1));
    const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto end = rest.find('\n');
    const std::string_view key = rest.substr(0, end);
    const std::string_view text = end == std::string_view::npos ? "" : rest.substr(end + 1);
    const zuksw::Values values = zuksw::extractValues(format, text, std::nullopt, key);
    // A key that is refused finds nothing.
    if (!zuksw::valueKeyProblem(format, key).empty() && !values.found.empty()) std::abort();
    return 0;
}
