// What does a scan of this machine cost beside opening, reading and closing the files that it reads, and
// beside other tools?
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <set>

#include "bench/support/arguments.h"
#include "bench/support/measure.h"
#include "bench/support/program_run.h"
#include "bench/support/scratch_file.h"
#include "bench/support/traced_run.h"
#include "hw/catalogue.h"

namespace {
constexpr char kCheapGroup[] = "Operating System";
constexpr int kToolRounds = 5;  // of the other tools, some of which take seconds

struct Subject {
    std::string label;
    std::vector<std::string> words;
    int rounds;
    std::vector<double> ratios = {};
    std::vector<ProgramRun> runs = {};
};

void writeConfig(const std::string& path, const std::vector<std::string>& groups) {
    std::ofstream config(path);
    config << "<KAV><ZUK><Hardware>";
    for (const std::string& group : groups) config << "<Group Name=\"" << group << "\"/>";
    config << "</Hardware></ZUK></KAV>";
}

std::vector<std::string> allGroups() {
    std::vector<std::string> names;
    for (const HWGroup* group = HW_GROUPS; group->id != HW_GROUP_SLOTS; ++group) {
        names.emplace_back(group->configName);
    }
    return names;
}

bool startsWith(const std::string& text, const char* start) {
    return text.rfind(start, 0) == 0;
}

// What the sources of all groups are here: the part of what a scan reads that nothing could do without (no
// libraries, no settings, no name tables), and the state of each block of memory, which a scan need not read
// when all of them are in use. Without these the floor would sink by what a scan has learnt to do without.
std::vector<std::string> floorFiles(const TracedRun& scan) {
    std::set<std::string> files;
    for (const std::string& file : scan.filesRead) {
        const bool counts = startsWith(file, "/proc/") || startsWith(file, "/sys/");
        if (counts || file == "/var/lib/dpkg/status") files.insert(file);
    }
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/sys/devices/system/memory", error)) {
        const std::filesystem::path state = entry.path() / "online";
        if (std::filesystem::exists(state, error)) files.insert(state);
    }
    return {files.begin(), files.end()};
}

void readToTheEnd(const std::vector<std::string>& files) {
    static char buffer[64 * 1024];
    for (const std::string& file : files) {
        const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0) continue;
        while (read(descriptor, buffer, sizeof buffer) > 0) {
        }
        close(descriptor);
    }
}

double medianOf(const std::vector<ProgramRun>& runs, double ProgramRun::*figure) {
    std::vector<double> values;
    values.reserve(runs.size());
    for (const ProgramRun& run : runs) values.push_back(run.*figure);
    return median(values);
}

void measure(Subject* subject, double floor) {
    const std::optional<ProgramRun> run = runProgram(subject->words);
    if (!run) return;
    subject->runs.push_back(*run);
    subject->ratios.push_back(run->seconds / floor);
}

// In "files" the same ratio stands as a number of files: what opening, reading and closing that many takes.
void print(const Subject& subject, std::size_t floorFiles) {
    if (subject.runs.empty()) {
        std::printf("%-24s not installed, skipped\n", subject.label.c_str());
        return;
    }
    const double ratio = median(subject.ratios);
    std::printf("%-24s %9.2f %9.0f %9.2f %9.2f %9.1f\n", subject.label.c_str(), ratio,
                ratio * static_cast<double>(floorFiles), medianOf(subject.runs, &ProgramRun::seconds) * 1e3,
                medianOf(subject.runs, &ProgramRun::wallSeconds) * 1e3,
                medianOf(subject.runs, &ProgramRun::peakBytes) / (1024 * 1024));
}

// The library has a scan write to a path where nothing is: so has this, or emptying the last run's output
// would be measured as well.
void compare(std::vector<Subject> subjects, const std::vector<std::string>& files, const std::string& output,
             int rounds) {
    std::vector<double> floors;
    for (int round = 0; round < rounds; ++round) {
        floors.push_back(secondsOf([&] { readToTheEnd(files); }));
        for (Subject& subject : subjects) {
            unlink(output.c_str());
            if (round < subject.rounds) measure(&subject, floors.back());
        }
    }
    std::printf("%-24s %9s %9s %9s %9s %9s\n", "", "ratio", "files", "CPU, ms", "wall, ms", "peak, MiB");
    std::printf("%-24s %9.2f %9zu %9.2f\n", "floor", 1.0, files.size(), median(floors) * 1e3);
    for (const Subject& subject : subjects) print(subject, files.size());
}
}  // namespace

int main(int argc, char** argv) try {
    const int rounds = numberArgument(argc, argv, 1, 51);
    if (rounds < 1) {
        std::fprintf(stderr, "usage: %s [ROUNDS]\n", argv[0]);
        return 2;
    }
    const ScratchFile all, one, none, output;
    writeConfig(all.path(), allGroups());
    writeConfig(one.path(), {kCheapGroup});
    writeConfig(none.path(), {});
    const auto scan = [&](const ScratchFile& config) {
        return std::vector<std::string>{ZUKHW_PROGRAM, "-c", config.path(), "-o", output.path()};
    };
    const TracedRun traced = runTraced(scan(all));
    const std::vector<std::string> files = floorFiles(traced);
    std::printf("floor: %zu files; zukhw started %d processes\n", files.size(), traced.childProcesses);
    const int toolRounds = std::min(rounds, kToolRounds);
    compare({{"zukhw, every group", scan(all), rounds},
             {std::string("zukhw, ") + kCheapGroup, scan(one), rounds},
             {"zukhw, no group", scan(none), rounds},
             {"lscpu", {"lscpu"}, toolRounds},
             {"lshw", {"lshw"}, toolRounds},
             {"hwinfo", {"hwinfo"}, toolRounds},
             {"inxi -F", {"inxi", "-F"}, toolRounds}},
            files, output.path(), rounds);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
