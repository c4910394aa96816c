// The lines of ld.so.conf are read without harm whatever their bytes; each names something in one line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "scanners/zuksw/sources/library_paths.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const zuksw::LoaderLine& line :
         zuksw::parseLoaderConfiguration({reinterpret_cast<const char*>(data), size})) {
        if (line.path.empty() || line.path.find('\n') != std::string::npos) std::abort();
        if (!line.isInclude && line.path[0] != '/') std::abort();
    }
    return 0;
}
