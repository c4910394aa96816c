#include "cli/home.h"

#include <unistd.h>

#include <filesystem>

namespace fs = std::filesystem;

std::optional<std::string> findHome() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (error) return std::nullopt;

    const fs::path beside = self.parent_path();
    for (const fs::path& directory : {beside, (beside / ZUK_SCANNERS_FROM_COMMAND).lexically_normal()}) {
        if (access((directory / "zukhw").c_str(), X_OK) == 0) return directory.string();
    }
    return std::nullopt;
}
