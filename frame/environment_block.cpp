#include "frame/environment_block.h"

#include <unistd.h>

#include <string_view>

#include "frame/narrow.h"

std::string buildEnvironment(const std::wstring& homeDir) {
    constexpr std::string_view kLibraryPath = "LD_LIBRARY_PATH=";
    const std::string home = narrow(homeDir);
    std::string block;
    bool extended = false;
    // After clearenv() there is no list at all.
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        std::string_view text = *entry;
        if (text.empty()) continue;  // it would end the block, and cost the child the rest
        if (text.substr(0, kLibraryPath.size()) == kLibraryPath) {
            text.remove_prefix(kLibraryPath.size());
            block.append(kLibraryPath).append(home).append(":");
            extended = true;
        }
        block.append(text).push_back('\0');
    }
    if (!extended) block.append(kLibraryPath).append(home);
    return block.append(3, '\0');
}
