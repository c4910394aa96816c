// The description of one of pacman's packages, and the list of its files.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/shared/packages/pacman.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::optional<Package> package = parsePacmanDesc(text);
    if (package && (package->name.empty() || package->version.empty())) std::abort();
    forEachPacmanPath(text, [](std::string_view path) {
        if (path.empty()) std::abort();
    });
    return 0;
}
