// The first byte chooses a scheme; the two lines after it are compared. Turned round they compare the other
// way.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zuksw/versions/compare.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto scheme =
        static_cast<zuksw::Scheme>(data[0] % (static_cast<int>(zuksw::Scheme::kTextNoCase) + 1));
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto end = text.find('\n');
    const std::string_view a = text.substr(0, end);
    const std::string_view b = end == std::string_view::npos ? "" : text.substr(end + 1);
    const auto order = zuksw::compareVersions(scheme, a, b);
    const auto turned = zuksw::compareVersions(scheme, b, a);
    if (order.has_value() != turned.has_value() || (order && *order != -*turned)) std::abort();
    if (zuksw::compareVersions(scheme, a, a).value_or(0) != 0) std::abort();
    return 0;
}
