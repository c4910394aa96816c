#include "bench/support/reading_bench.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include "bench/support/arguments.h"
#include "bench/support/empty_parse.h"
#include "bench/support/measure.h"
#include "bench/support/scratch_file.h"

namespace {
constexpr char kFloor[] = "expat";

void measureReading(const Reading& reading, int rounds, std::size_t bytes) {
    const ScratchFile file;
    reading.writeFile(file.path(), bytes);
    struct stat status {};
    stat(file.path().c_str(), &status);

    std::vector<double> floors;
    std::vector<double> inCall;
    std::vector<double> release;
    std::vector<double> asProcess;
    std::vector<double> memory;
    for (int round = 0; round < rounds; ++round) {
        const double floor = secondsOf([&] { parseWithEmptyHandlers(file.path()); });
        floors.push_back(floor);
        std::shared_ptr<void> found;
        inCall.push_back(secondsOf([&] { found = reading.read(file.path()); }) / floor);
        release.push_back(secondsOf([&] { found.reset(); }) / floor);
        const ChildRun bare = runSelf({"--child", kFloor, file.path()});
        const ChildRun full = runSelf({"--child", reading.name, file.path()});
        asProcess.push_back(full.seconds / bare.seconds);
        memory.push_back(full.peakBytes / static_cast<double>(status.st_size));
    }
    std::printf("%-28s %8.1f ms %8.2f %8.2f %8.2f %8.2f\n", reading.name, median(floors) * 1e3,
                median(inCall), median(asProcess), median(memory), median(release));
}

int runChild(const char* name, const char* path, const std::vector<Reading>& readings) {
    if (std::strcmp(name, kFloor) == 0) {
        parseWithEmptyHandlers(path);
        reportPeak();
        return 0;
    }
    for (const Reading& reading : readings) {
        if (std::strcmp(name, reading.name) != 0) continue;
        [[maybe_unused]] const std::shared_ptr<void> found = reading.read(path);
        reportPeak();
        std::_Exit(0);  // while it is held
    }
    return 1;
}
}  // namespace

int runReadingBench(int argc, char** argv, const std::vector<Reading>& readings) try {
    if (argc == 4 && std::strcmp(argv[1], "--child") == 0) return runChild(argv[2], argv[3], readings);

    const int rounds = numberArgument(argc, argv, 1, 11);
    const int megabytes = numberArgument(argc, argv, 2, 20);
    if (rounds < 1 || megabytes < 1) {
        std::fprintf(stderr, "usage: %s [ROUNDS [MEGABYTES]]\n", argv[0]);
        return 2;
    }
    std::printf("%-28s %11s %8s %8s %8s %8s\n", "reading", "bare parse", "call", "process", "bytes/B",
                "release");
    for (const Reading& reading : readings)
        measureReading(reading, rounds, static_cast<std::size_t>(megabytes) << 20);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
