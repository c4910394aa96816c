// The specification of a gem is read without harm whatever its bytes; what it names is named in one line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "scanners/zuksw/sources/language_packages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto package = zuksw::parseGemspec({reinterpret_cast<const char*>(data), size});
    if (!package) return 0;
    for (const std::string& text : {package->name, package->version}) {
        if (text.empty() || text.find('\n') != std::string::npos) std::abort();
    }
    return 0;
}
