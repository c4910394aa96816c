#include "tests/zukhw/captures.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "scanners/shared/affix.h"
#include "tests/support/files.h"
#include "tests/support/shell.h"
#include "tests/zukhw/scanner_run.h"

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSuffix = ".tar.xz";

}  // namespace

std::string capturesFolder() {
    const char* chosen = std::getenv("ZUK_MACHINES");
    const std::string folder =
        chosen != nullptr ? chosen : std::string(ZUK_SOURCE_DIR) + "/../shared/machines";
    return fs::is_directory(folder) ? folder : "";
}

std::vector<std::string> captureNames(const std::string& folder) {
    std::vector<std::string> names;
    const std::string path = capturesFolder() + '/' + folder;
    if (capturesFolder().empty() || !fs::is_directory(path)) return names;
    for (const auto& entry : fs::directory_iterator(path)) {
        const std::string file = entry.path().filename().string();
        if (endsWith(file, kSuffix)) {
            names.push_back(folder + '/' + file.substr(0, file.size() - kSuffix.size()));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string captureText(const std::string& file) {
    return readFile(capturesFolder() + '/' + file);
}

Capture::Capture(const std::string& name) {
    const std::string archive = capturesFolder() + '/' + name + std::string(kSuffix);
    const ShellResult result = shell("tar -xJf " + quoted(archive) + " -C " + quoted(folder_.path()));
    if (result.status != 0) throw std::runtime_error(archive + ": " + result.err);
    root_ = folder_.path() + name.substr(name.find('/'));
}

Machine Capture::machine(const std::string& cpuidSignature) const {
    return Machine(*RootedFs::below(root_), Deadline(std::chrono::hours(1)), cpuidSignature);
}

std::string scanCapture(const Capture& capture, const std::string& group) {
    const TemporaryFolder folder;
    const std::string output = folder.path() + "/out.xml";
    const ScannerRun run = runScanner(
        {"-c", folder.file("config.xml", configFor({group})), "-o", output, "--root", capture.root()});
    if (run.status != 0) throw std::runtime_error(run.errors);
    return readFile(output);
}
