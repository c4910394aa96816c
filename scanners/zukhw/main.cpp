#include <malloc.h>

#include <cstdio>
#include <string>
#include <vector>

#include "scanners/shared/options.h"
#include "scanners/shared/output_file.h"
#include "scanners/zukhw/config.h"
#include "scanners/zukhw/scan.h"
#include "scanners/zukhw/version.h"

namespace {

enum ExitStatus { kDone = 0, kBadRequest = 1, kNotWritten = 2 };

constexpr std::chrono::seconds kPerScan(10);

constexpr char kUsage[] =
    "Usage: zukhw -c CONFIG -o OUTPUT [--root DIR] [--cpuid-signature TEXT]\n"
    "Lists what this machine has, group by group, as XML.\n"
    "  -c, --config CONFIG      the groups to collect: <KAV><ZUK><Hardware><Group Name=\"Memory\"/>...\n"
    "  -o, --output OUTPUT      the file to write; it is emptied first\n"
    "  --root DIR               scan the copy of a machine's files below DIR instead of this machine\n"
    "  --cpuid-signature TEXT   the hypervisor's CPUID signature of that machine (KVMKVMKVM, ...)\n"
    "  --help, --version\n"
    "Exit status: 0 output written; 1 bad command line or configuration; 2 output not written.\n";

struct Request {
    std::string config, output, root, cpuidSignature;
    bool help = false, version = false;
};

int reject(const std::string& problem) {
    std::fprintf(stderr, "zukhw: %s\nTry 'zukhw --help'.\n", problem.c_str());
    return kBadRequest;
}

std::string readRequest(const std::vector<std::string>& words, Request* request) {
    const std::vector<OptionSpec> options = {{"-c", "--config", &request->config},
                                             {"-o", "--output", &request->output},
                                             {nullptr, "--root", &request->root},
                                             {nullptr, "--cpuid-signature", &request->cpuidSignature}};
    return parseOptions(words, options, {{"--help", &request->help}, {"--version", &request->version}});
}

// What is given back to the system is asked for again soon, and every page of it costs as much as a short
// file.
void keepFreedMemory() {
    constexpr int kMost = 32 << 20;  // the most that the C library takes for the first
    mallopt(M_MMAP_THRESHOLD, kMost);
    mallopt(M_TRIM_THRESHOLD, kMost);
}

std::optional<RootedFs> openMachine(const std::string& root) {
    return root.empty() ? RootedFs::ofLiveMachine() : RootedFs::below(root);
}

int run(const Request& request) {
    ScanConfig config;
    const std::string problem = readConfig(request.config, &config);
    if (!problem.empty()) return reject(problem);
    std::optional<RootedFs> files = openMachine(request.root);
    if (!files) return reject("--root " + request.root + ": not a directory that can be opened");
    OutputFile output(request.output);
    bool written = false;
    if (output.isOpen()) {
        Machine machine(std::move(*files), Deadline(kPerScan), request.cpuidSignature);
        machine.shared<ScanRecord>().root = request.root;
        written = scan(config.groups, &machine, &output);
    }
    if (written) return kDone;
    std::fprintf(stderr, "zukhw: %s: cannot be written: %s\n", request.output.c_str(),
                 output.error().c_str());
    return kNotWritten;
}

}  // namespace

int main(int argc, char** argv) {
    keepFreedMemory();
    Request request;
    const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
    const std::string problem = readRequest(words, &request);
    if (!problem.empty()) return reject(problem);
    if (request.help) return std::fputs(kUsage, stdout) < 0 ? kNotWritten : kDone;
    if (request.version) return std::printf("zukhw %s\n", kScannerVersion) < 0 ? kNotWritten : kDone;
    if (request.config.empty()) return reject("-c CONFIG is missing");
    if (request.output.empty()) return reject("-o OUTPUT is missing");
    return run(request);
}
