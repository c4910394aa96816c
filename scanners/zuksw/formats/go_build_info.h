#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "scanners/zuksw/formats/elf.h"

namespace zuksw {

struct GoModule {
    std::string_view path;
    std::string_view version;  // of what was built: where another module replaces it, that one's
};

/** What the Go linker writes into its programs. Points into the file's bytes. */
struct GoBuildInfo {
    std::string_view goVersion;  // "go1.21.4"
    std::string_view path;       // of the main package
    GoModule main;
    std::vector<GoModule> dependencies;
};

/** Nothing when the file is not made by Go, or by one before 1.13. */
std::optional<GoBuildInfo> readGoBuildInfo(const Elf& elf);

}  // namespace zuksw
