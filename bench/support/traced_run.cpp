#include "bench/support/traced_run.h"

#include <fstream>
#include <stdexcept>

#include "bench/support/program_run.h"
#include "bench/support/scratch_file.h"

namespace {
bool has(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

// `28501 openat(3</>, "proc/stat", O_RDONLY|O_CLOEXEC) = 5</proc/stat>`
void readLine(const std::string& line, TracedRun* run) {
    if (has(line, "fork(") || has(line, "clone")) ++run->childProcesses;
    const std::size_t result = line.rfind(") = ");
    const std::size_t path = result == std::string::npos ? result : line.find('<', result);
    if (path == std::string::npos || has(line, "O_DIRECTORY") || has(line, "O_PATH")) return;
    std::string file = line.substr(path + 1, line.rfind('>') - path - 1);
    const std::string own = "/proc/" + line.substr(0, line.find(' ')) + '/';
    if (file.compare(0, own.size(), own) == 0) file.replace(0, own.size(), "/proc/self/");
    run->filesRead.insert(file);
}
}  // namespace

TracedRun runTraced(const std::vector<std::string>& words) {
    const ScratchFile trace;
    std::vector<std::string> traced = {
        "strace", "-f", "-y", "-s", "4096", "-o", trace.path(), "-e", "trace=open,openat,openat2,%process"};
    traced.insert(traced.end(), words.begin(), words.end());
    if (!runProgram(traced)) throw std::runtime_error("strace tells which files are read: install it");
    TracedRun run;
    std::ifstream lines(trace.path());
    for (std::string line; std::getline(lines, line);) readLine(line, &run);
    return run;
}
