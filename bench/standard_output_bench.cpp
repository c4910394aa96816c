// What does a byte of a scanner's standard output cost, up to the log, when the log has no callback?
#include <fcntl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

#include "bench/support/measure.h"
#include "frame/log.h"
#include "frame/standard_output.h"
#include "platform/descriptor_stream.h"
#include "platform/runtime.h"

namespace {

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

constexpr int kRounds = 21;
constexpr std::size_t kBytes = 20000000;

void writeLines(const std::string& path, std::size_t lineLength) {
    const std::string line = std::string(lineLength - 1, 'x') + "\n";
    std::ofstream file(path, std::ios::binary);
    for (std::size_t written = 0; written < kBytes; written += line.size()) file << line;
}

void readFile(const std::string& path, ZUKlog* log) {
    DescriptorStream stream(FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)));
    logStandardOutput(stream, log, "bench");
}

void readChild(const std::string& path, ZUKlog* log) {
    const std::string command = "/bin/cat " + path;
    const std::unique_ptr<Process> process(
        Runtime().execute(std::wstring(command.begin(), command.end()).c_str(), "\0\0\0"));
    if (!process) fail("cannot start /bin/cat");
    logStandardOutput(*process->standardOutput(), log, "bench");
}

void printNanosecondsPerByte(void (*readOutput)(const std::string&, ZUKlog*), const std::string& path) {
    ZUKlog log(3, nullptr, nullptr);
    std::vector<double> costs;
    costs.reserve(kRounds);
    for (int round = 0; round < kRounds; ++round) {
        costs.push_back(secondsOf([&] { readOutput(path, &log); }) * 1e9 / static_cast<double>(kBytes));
    }
    std::printf(" %8.2f %8.2f", median(costs), *std::min_element(costs.begin(), costs.end()));
}

}  // namespace

int main() {
    char path[] = "/tmp/zuk_bench_XXXXXX";
    const FileDescriptor file(mkstemp(path));
    std::printf("standard output, ns a byte (limit 2.5)\n%12s %8s %8s %8s %8s\n", "line length", "file",
                "best", "child", "best");
    for (const std::size_t length : {10, 40, 80, 1000}) {
        writeLines(path, length);
        std::printf("%12zu", length);
        printNanosecondsPerByte(readFile, path);
        printNanosecondsPerByte(readChild, path);
        std::printf("\n");
    }
    std::remove(path);
}
