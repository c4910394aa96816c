#include "scanners/zuksw/setup/program.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

#include "scanners/shared/output_file.h"
#include "scanners/zuksw/evaluation/scan.h"
#include "scanners/zuksw/files/read_file.h"
#include "scanners/zuksw/language/line_index.h"
#include "scanners/zuksw/output/results.h"
#include "scanners/zuksw/setup/check_run.h"
#include "scanners/zuksw/setup/command_line.h"
#include "scanners/zuksw/setup/messages.h"
#include "scanners/zuksw/setup/sandbox.h"
#include "scanners/zuksw/setup/threads.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxMountinfo = std::size_t{16} << 20U;

std::atomic<bool> stopRequested{false};

void onStopSignal(int /*signal*/) {
    stopRequested = true;
}

// A signal to stop ends a scan early, and completely. What cannot be written is told by the call that fails.
void installSignals() {
    struct sigaction action = {};
    action.sa_handler = onStopSignal;
    for (const int signal : {SIGTERM, SIGINT}) ::sigaction(signal, &action, nullptr);
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    installFaultHandler();
}

// What is wrong with signatures becomes events; of one signature the first mistake, with the number of
// others.
void reportFindings(const SignatureSet& set, std::string_view bytes, Events* events) {
    LineIndex lines(bytes);
    std::vector<std::size_t> mistakes(set.signatures().size());
    const auto isMistake = [](const Finding& finding) { return finding.level == Finding::Level::kError; };
    for (const Finding& finding : set.findings()) {
        if (isMistake(finding)) ++mistakes[finding.signature];
    }
    for (const Finding& finding : set.findings()) {
        if (finding.level == Finding::Level::kAdvice) continue;
        const bool ofSignature = finding.signature != Finding::kNone;
        std::string text = lines.describe(finding.offset) + ": " + finding.text;
        if (isMistake(finding)) {
            std::size_t& count = mistakes[finding.signature];
            if (count > 1) text += " (and " + std::to_string(count - 1) + " more)";
            if (count == 0) continue;
            count = 0;
        }
        events->add(finding.code, ofSignature ? set.signatures()[finding.signature].guid : std::string(),
                    text);
    }
}

// One run, from its inputs to its files. Members are made in the order in which the run needs them.
class Run {
  public:
    explicit Run(const CommandLine& line) : line_(line), begin_(std::chrono::steady_clock::now()) {}

    int perform();

  private:
    int readInputs();
    bool readSignatures();
    int scanAndWrite();
    bool scanTree(Outcomes* outcomes);
    int cannotWrite(const std::string& path, const OutputFile& file);
    void sayDone(const Outcomes& outcomes) const;

    const CommandLine& line_;
    std::chrono::steady_clock::time_point begin_;
    Configuration configuration_;
    Events events_{1000};
    std::string signatureBytes_;
    std::optional<PatternStore> patterns_;
    std::optional<Presets> presets_;
    SignatureSet signatures_;
    std::uint64_t entries_ = 0;
    std::uint64_t opened_ = 0;
    std::uint64_t bytes_ = 0;
};

int Run::readInputs() {
    std::string error;
    const std::optional<std::string> bytes = readInput(line_.configuration, &error);
    if (bytes) error = readConfiguration(*bytes, &configuration_, &events_);
    if (!error.empty()) {
        say("error", line_.configuration + ": " + error);
        return kExitConfiguration;
    }
    return readSignatures() ? kExitDone : kExitSignatures;
}

bool Run::readSignatures() {
    std::string error;
    std::optional<std::string> bytes = readInput(line_.signatures, &error);
    if (bytes) {
        signatureBytes_ = *std::move(bytes);
        patterns_.emplace(static_cast<std::int64_t>(configuration_.content.regexMemory));
        presets_.emplace(configuration_.presets);
        error = signatures_.read(signatureBytes_, &*patterns_, &*presets_,
                                 threadsFor(configuration_.limits.threads), stopRequested);
        if (stopRequested) return true;  // nothing of what was read so far counts
        for (const Preset* preset : presets_->unused()) {
            events_.add(EventCode::kPresetUnused, preset->guid,
                        "no signature takes the preset variable '" + preset->name + "'");
        }
    }
    if (error.empty() && configuration_.limits.strict && signatures_.invalidCount() > 0) {
        for (const Finding& finding : signatures_.findings()) {
            if (finding.level != Finding::Level::kError) continue;
            error = LineIndex(signatureBytes_).describe(finding.offset) + ": " + finding.text;
            break;
        }
    }
    if (!error.empty()) say("error", line_.signatures + ": " + error);
    return error.empty();
}

int Run::cannotWrite(const std::string& path, const OutputFile& file) {
    say("error", path + ": cannot be written: " + file.error());
    return kExitOutput;
}

int Run::scanAndWrite() {
    OutputFile output(line_.output);
    if (!output.isOpen()) return cannotWrite(line_.output, output);
    OutputFile warnings(line_.warnings);
    if (!warnings.isOpen()) return cannotWrite(line_.warnings, warnings);
    lowerPriority(static_cast<int>(configuration_.limits.nice));
    reportFindings(signatures_, signatureBytes_, &events_);
    Outcomes outcomes(signatures_);
    if (!scanTree(&outcomes)) return kExitConfiguration;
    const bool written = writeResults(outcomes, configuration_.limits.maxResults, &events_, &output);
    if (!written || !output.close()) return cannotWrite(line_.output, output);
    reportUndecided(outcomes, &events_);
    if (!warnings.write(events_.toXml()) || !warnings.close()) return cannotWrite(line_.warnings, warnings);
    sayDone(outcomes);
    return kExitDone;
}

// Looks at the machine; nothing of it is held any more when the results are written.
bool Run::scanTree(Outcomes* outcomes) {
    const Budget budget(configuration_.limits.timeBudget, stopRequested);
    const std::optional<FileTree> tree = FileTree::open(configuration_.system.prefix);
    if (!tree) {
        say("error",
            "system/Prefix: " + configuration_.system.prefix + " is no directory that can be opened");
        return false;
    }
    const std::optional<FileTree> live = FileTree::open("");
    const auto mountinfo = live ? readFile(*live, "/proc/self/mountinfo", kMaxMountinfo) : std::nullopt;
    const Territory territory(configuration_, *tree, parseMounts(mountinfo.value_or("")));
    for (const std::string& root : territory.missingRoots()) {
        events_.add(EventCode::kNotSearched, {}, "search/Root is no directory that can be opened", root);
    }
    Machine machine(configuration_, *tree, territory, budget, events_, *patterns_);
    if (signatures_.asksForProcesses()) machine.processes.take();
    const std::string missing = enterSandbox();
    if (!missing.empty()) events_.add(EventCode::kSandboxOff, {}, "the kernel does not offer: " + missing);
    scan(signatures_, threadsFor(configuration_.limits.threads), &machine, outcomes);
    entries_ = machine.files.entries();
    opened_ = machine.opened;
    bytes_ = machine.bytes;
    return true;
}

void Run::sayDone(const Outcomes& outcomes) const {
    std::size_t matched = 0;
    std::size_t results = 0;
    std::size_t undecided = 0;
    for (std::size_t i = 0; i < signatures_.signatures().size(); ++i) {
        const Outcome& outcome = outcomes.of(i);
        matched += outcome.results.empty() ? 0 : 1;
        results += outcome.results.size();
        undecided += outcome.results.empty() && outcome.causes != 0 ? 1 : 0;
    }
    const auto ms =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin_);
    const auto field = [](const char* name, std::uint64_t value) { return name + std::to_string(value); };
    say("done", field("signatures=", signatures_.signatures().size()) + field(" matched=", matched) +
                    field(" results=", results) + field(" undecided=", undecided) +
                    field(" invalid=", signatures_.invalidCount()) + field(" entries=", entries_) +
                    field(" opened=", opened_) + field(" bytes=", bytes_) +
                    field(" ms=", static_cast<std::uint64_t>(ms.count())));
}

int Run::perform() {
    installSignals();
    const int status = readInputs();
    return status == kExitDone ? scanAndWrite() : status;
}

int run(const std::vector<std::string>& words) {
    CommandLine line;
    const std::string error = readCommandLine(words, &line);
    if (!error.empty()) {
        say("error", error + "; try --help");
        return kExitUsage;
    }
    if (line.help) return std::fputs(kUsage, stdout) < 0 ? kExitOutput : kExitDone;
    if (line.version) return std::puts("zuksw " ZUKSW_VERSION) < 0 ? kExitOutput : kExitDone;
    if (line.check) return checkSignatures(line.signatures);
    // Never destroyed: the process ends, and a hundred thousand signatures take their time to take apart.
    static Run* const kRun = new Run(line);
    return kRun->perform();
}

// Tells of the exception that is being handled.
int failed() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        say("error", "out of memory");
    } catch (const std::exception& error) {
        say("error", error.what());
    } catch (...) {
        say("error", "internal failure");
    }
    return kExitInternal;
}

// What a thread throws reaches nobody else.
[[noreturn]] void giveUp() {
    ::_exit(std::current_exception() ? failed() : kExitInternal);
}

}  // namespace

int runProgram(const std::vector<std::string>& words) {
    std::set_terminate(giveUp);
    try {
        return run(words);
    } catch (...) {
        return failed();
    }
}

}  // namespace zuksw
