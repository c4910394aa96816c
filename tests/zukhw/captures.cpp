#include "tests/zukhw/captures.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "tests/support/files.h"
#include "tests/zukhw/scanner_run.h"

namespace {

void unpack(const std::string& archive, const std::string& folder) {
    const char* argv[] = {"tar", "-xJf", archive.c_str(), "-C", folder.c_str(), nullptr};
    pid_t pid = 0;
    int status = -1;
    const int error = posix_spawnp(&pid, argv[0], nullptr, nullptr, const_cast<char**>(argv), environ);
    if (error == 0) waitpid(pid, &status, 0);
    if (error != 0 || status != 0) throw std::runtime_error("cannot unpack " + archive);
}

}  // namespace

std::string capturesFolder() {
    const char* chosen = std::getenv("ZUK_MACHINES");
    const std::string folder =
        chosen != nullptr ? chosen : std::string(ZUK_SOURCE_DIR) + "/../shared/machines";
    return std::filesystem::is_directory(folder) ? folder : "";
}

Capture::Capture(const std::string& name) {
    unpack(capturesFolder() + '/' + name + ".tar.xz", folder_.path());
    root_ = folder_.path() + name.substr(name.find('/'));
}

std::string scanCapture(const Capture& capture, const std::string& group) {
    const TemporaryFolder folder;
    const std::string output = folder.path() + "/out.xml";
    const ScannerRun run = runScanner(
        {"-c", folder.file("config.xml", configFor({group})), "-o", output, "--root", capture.root()});
    if (run.status != 0) throw std::runtime_error(run.errors);
    return readFile(output);
}
