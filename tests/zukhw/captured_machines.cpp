#include "tests/zukhw/captured_machines.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "tests/support/shell.h"

namespace fs = std::filesystem;

std::string capturedMachines() {
    const char* named = std::getenv("ZUK_CAPTURED_MACHINES");
    const std::string folder = named != nullptr ? named : std::string(ZUK_SOURCE_DIR) + "/../shared/machines";
    return fs::is_directory(folder) ? folder : "";
}

std::vector<std::string> captureNames(const std::string& folder) {
    static const std::string kSuffix = ".tar.xz";
    std::vector<std::string> names;
    const std::string path = capturedMachines() + '/' + folder;
    if (capturedMachines().empty() || !fs::is_directory(path)) return names;
    for (const auto& entry : fs::directory_iterator(path)) {
        const std::string file = entry.path().filename().string();
        if (file.size() <= kSuffix.size() || file.substr(file.size() - kSuffix.size()) != kSuffix) continue;
        names.push_back(file.substr(0, file.size() - kSuffix.size()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

CapturedMachine::CapturedMachine(const std::string& folder, const std::string& name) : name_(name) {
    const std::string archive = capturedMachines() + '/' + folder + '/' + name + ".tar.xz";
    const ShellResult result = shell("tar -xf " + quoted(archive) + " -C " + quoted(unpacked_.path()));
    if (result.status != 0) throw std::runtime_error(archive + ": " + result.err);
}
