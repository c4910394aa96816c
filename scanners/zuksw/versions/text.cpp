#include "scanners/zuksw/versions/characters.h"
#include "scanners/zuksw/versions/schemes.h"

namespace zuksw {

std::optional<int> compareText(std::string_view a, std::string_view b) {
    return signOf(a.compare(b));
}

std::optional<int> compareTextNoCase(std::string_view a, std::string_view b) {
    return compareNoCase(a, b);
}

}  // namespace zuksw
