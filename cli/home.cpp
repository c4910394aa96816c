#include "cli/home.h"

#include <unistd.h>

namespace fs = std::filesystem;

fs::path programDirectory() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : self.parent_path();
}

std::optional<std::string> findHome() {
    const fs::path beside = programDirectory();
    if (beside.empty()) return std::nullopt;
    for (const fs::path& directory : {beside, (beside / ZUK_SCANNERS_FROM_COMMAND).lexically_normal()}) {
        if (access((directory / "zukhw").c_str(), X_OK) == 0) return directory.string();
    }
    return std::nullopt;
}
