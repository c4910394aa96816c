#include "bench/support/reading_bench.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/support/empty_parse.h"
#include "bench/support/measure.h"

namespace {
constexpr char kFloor[] = "expat";

// A file of the program's own that goes with it.
class ScratchFile {
  public:
    ScratchFile() { close(mkstemp(path_)); }
    ~ScratchFile() { unlink(path_); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    std::string path() const { return path_; }

  private:
    char path_[32] = "/tmp/zuk_bench_XXXXXX";
};

void measureReading(const Reading& reading, int rounds, std::size_t bytes) {
    const ScratchFile file;
    reading.writeFile(file.path(), bytes);
    struct stat status {};
    stat(file.path().c_str(), &status);

    std::vector<double> floors;
    std::vector<double> inCall;
    std::vector<double> asProcess;
    std::vector<double> memory;
    for (int round = 0; round < rounds; ++round) {
        const double floor = secondsOf([&] { parseWithEmptyHandlers(file.path()); });
        floors.push_back(floor);
        inCall.push_back(secondsOf([&] { reading.read(file.path()); }) / floor);
        const ChildRun bare = runSelf({"--child", kFloor, file.path()});
        const ChildRun full = runSelf({"--child", reading.name, file.path()});
        asProcess.push_back(full.seconds / bare.seconds);
        memory.push_back(full.peakBytes / static_cast<double>(status.st_size));
    }
    std::printf("%-28s %8.1f ms %8.2f %8.2f %8.2f\n", reading.name, median(floors) * 1e3, median(inCall),
                median(asProcess), median(memory));
}

int runChild(const char* name, const char* path, const std::vector<Reading>& readings) {
    if (std::strcmp(name, kFloor) == 0) {
        parseWithEmptyHandlers(path);
        return 0;
    }
    for (const Reading& reading : readings) {
        if (std::strcmp(name, reading.name) == 0) {
            reading.read(path);
            return 0;
        }
    }
    return 1;
}
}  // namespace

int runReadingBench(int argc, char** argv, const std::vector<Reading>& readings) {
    if (argc == 4 && std::strcmp(argv[1], "--child") == 0) return runChild(argv[2], argv[3], readings);

    const int rounds = argc > 1 ? std::atoi(argv[1]) : 11;
    const std::size_t megabytes = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 20;
    if (rounds < 1 || megabytes < 1) {
        std::fprintf(stderr, "usage: %s [ROUNDS [MEGABYTES]]\n", argv[0]);
        return 2;
    }
    std::printf("%-28s %11s %8s %8s %8s\n", "reading", "bare parse", "call", "process", "bytes/B");
    for (const Reading& reading : readings) measureReading(reading, rounds, megabytes << 20);
    return 0;
}
