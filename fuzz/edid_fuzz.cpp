// Any bytes are read as an EDID, or refused, without harm; what is told of the size of things stays in
// bounds.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/edid.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto edid = parseEdid({reinterpret_cast<const char*>(data), size});
    if (!edid) return 0;
    if (size < 128 || edid->makerLetters.size() > 3 || edid->model.size() > 4 * 14) std::abort();
    if (edid->preferred && (edid->preferred->width == 0 || edid->preferred->height == 0)) std::abort();
    if (edid->widthMillimetres.has_value() != edid->heightMillimetres.has_value()) std::abort();
    return 0;
}
