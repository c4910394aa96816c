// What does a scan for software cost beside walking the same directories and doing nothing else, how does it
// grow with signatures, files and threads, and what do other tools take for the same questions?
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>

#include "bench/support/arguments.h"
#include "bench/support/directory_floor.h"
#include "bench/support/measure.h"
#include "bench/support/program_run.h"
#include "bench/support/small_files.h"
#include "bench/support/software_questions.h"

namespace {

constexpr std::size_t kSmallFiles = 1'000'000;
constexpr double kContentRate = 1e9;  // bytes a second that content may cost besides

// Files as long as the benchmark runs.
class Scratch {
  public:
    explicit Scratch(const std::string& parent) : path_(parent + "/zuk_bench_XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot create " + path_);
    }
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string file(const std::string& name, const std::string& text) const {
        std::ofstream(path(name)) << text;
        return path(name);
    }
    std::string path(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

using Words = std::vector<std::string>;

Words scanOf(const Scratch& scratch, const std::string& name, const std::string& signatures,
             const std::string& root, unsigned threads = 2) {
    return {ZUKSW_PROGRAM,
            "-c",
            scratch.file(name + ".conf", scanConfiguration(root, threads)),
            "-i",
            scratch.file(name + ".xml", signatureFile(signatures)),
            "-o",
            scratch.path("output"),
            "-e",
            scratch.path("warnings")};
}

// A number of the line in which the scanner sums up what it did.
double summaryOf(const Words& words, const std::string& field) {
    std::string command;
    for (const std::string& word : words) command += "'" + word + "' ";
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
    std::string text(4096, '\0');
    text.resize(fread(text.data(), 1, text.size(), output.get()));
    const std::size_t at = text.find(" " + field + "=");
    if (at == text.npos) throw std::runtime_error("the scanner failed: " + text);
    return std::strtod(text.c_str() + at + field.size() + 2, nullptr);
}

// Subjects measured in turns; a first round, not counted, brings everything into memory.
class Turns {
  public:
    void add(const std::string& name, std::function<ProgramRun()> run) {
        names_.push_back(name);
        runs_[name] = {std::move(run), {}, {}};
    }
    // A program that is not installed is left out.
    void add(const std::string& name, const Words& words, bool mayFail = false) {
        if (!runProgram(words, mayFail)) return;
        add(name, [words, mayFail] { return *runProgram(words, mayFail); });
    }
    void addFloor(const std::string& root) {
        add("floor", [root] {
            const auto begin = std::chrono::steady_clock::now();
            walkDirectories(root, 2);
            const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
            return ProgramRun{0, wall.count(), 0};
        });
    }

    void measure(int rounds) {
        for (int round = 0; round <= rounds; ++round) {
            for (const std::string& name : names_) {
                Subject& subject = runs_[name];
                const ProgramRun run = subject.run();
                if (round > 0) subject.seconds.push_back(run.wallSeconds);
                subject.peaks.push_back(run.peakBytes);
            }
        }
    }

    bool has(const std::string& name) const { return runs_.count(name) != 0; }
    double seconds(const std::string& name) const { return median(runs_.at(name).seconds); }
    double peak(const std::string& name) const {
        const std::vector<double>& peaks = runs_.at(name).peaks;
        return *std::max_element(peaks.begin(), peaks.end());
    }
    // The median of the ratios of the same round.
    double ratio(const std::string& name, const std::string& base) const {
        std::vector<double> ratios = runs_.at(name).seconds;
        for (std::size_t i = 0; i < ratios.size(); ++i) ratios[i] /= runs_.at(base).seconds[i];
        return median(ratios);
    }

  private:
    struct Subject {
        std::function<ProgramRun()> run;
        std::vector<double> seconds;
        std::vector<double> peaks;
    };
    std::vector<std::string> names_;
    std::map<std::string, Subject> runs_;
};

void print(const Turns& turns, const std::string& name, const std::string& base, const std::string& limit) {
    if (!turns.has(name)) {
        std::printf("%-34s not installed, skipped\n", name.c_str());
        return;
    }
    std::printf("%-34s %9.1f %8.2f  %-28s %s\n", name.c_str(), turns.seconds(name) * 1e3,
                turns.ratio(name, base), base.c_str(), limit.c_str());
    std::fflush(stdout);
}

std::string limitOf(double ratio) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", ratio);
    return text;
}

std::string catalogue() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(ZUK_SOURCE_DIR "/signatures")) {
        if (entry.path().extension() == ".xml") paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::string all;
    for (const std::string& path : paths) all += signaturesIn(path);
    return all;
}

void wholeMachine(const Scratch& scratch, int rounds) {
    const std::string examples = signaturesIn(ZUK_SOURCE_DIR "/tests/data/signatures/examples.xml");
    const Words all = scanOf(scratch, "catalogue", catalogue(), "/");
    const Words few = scanOf(scratch, "examples", examples, "/");
    Turns turns;
    turns.addFloor("/");
    turns.add("28 examples", few);
    turns.add("28 examples, one thread", scanOf(scratch, "one", examples, "/", 1));
    turns.add("10,000 signatures", scanOf(scratch, "many", examples + namedSignatures(9'972), "/"));
    turns.add("100,000 signatures", scanOf(scratch, "most", examples + namedSignatures(99'972), "/"));
    turns.add("the catalogue", all);
    turns.add("find", {"find", "/", "-xdev"}, true);
    turns.measure(rounds);
    const auto content = [&](const Words& words) {
        return summaryOf(words, "bytes") / kContentRate / turns.seconds("floor");
    };
    std::printf("/ has %.0f entries, %.0f of them in what is searched\n",
                static_cast<double>(walkDirectories("/", 2)), summaryOf(few, "entries"));
    print(turns, "floor", "floor", "");
    print(turns, "28 examples", "floor", limitOf(2.0 + content(few)) + " with content");
    print(turns, "the catalogue", "floor", limitOf(3.0 + content(all)) + " with content");
    print(turns, "find", "floor", "");
    print(turns, "10,000 signatures", "28 examples", "1.30");
    print(turns, "100,000 signatures", "28 examples", "1.60");
    print(turns, "28 examples, one thread", "28 examples", "at least 1.50");
}

void withoutWalk(const Scratch& scratch, int rounds) {
    Turns turns;
    turns.add("50 signatures without a walk", scanOf(scratch, "facts", signaturesWithoutWalk(50), "/"));
    turns.measure(rounds);
    print(turns, "50 signatures without a walk", "50 signatures without a walk", "50 ms");
}

void againstOscap(const Scratch& scratch, int rounds) {
    const Words names = {"libcrypto.so.3", "libz.so.1.2.13",
                         "libc.so.6",      "nginx",
                         "httpd",          "mysqld",
                         "redis-server",   "git",
                         "sshd",           "python3.11",
                         "php8.2",         "dockerd",
                         "busybox",        "java",
                         "node",           "ruby3.1",
                         "perl5.36.0",     "libcurl.so.4.8.0",
                         "postgres",       "go"};
    const std::string oval = scratch.file("names.oval", fileDefinitions(names, "/usr"));
    Words find = {"find", "/usr", "-xdev", "-type", "f", "(", "-false"};
    for (const std::string& name : names) find.insert(find.end(), {"-o", "-name", name});
    find.emplace_back(")");
    Turns turns;
    turns.addFloor("/usr");
    turns.add("20 names below /usr", scanOf(scratch, "names", fileSignatures(names, "/usr"), "/"));
    turns.add("find, the same names", find, true);
    turns.add("oscap, the same names", {"oscap", "oval", "eval", oval}, true);
    turns.measure(std::min(rounds, 3));
    for (const char* name : {"20 names below /usr", "find, the same names", "oscap, the same names"})
        print(turns, name, "floor", "");
}

void againstYara(const Scratch& scratch, int rounds) {
    const Words patterns = {"OpenSSL 3\\.[0-9]+\\.[0-9]+",    "nginx\\/[0-9]+\\.[0-9]+\\.[0-9]+",
                            "Apache\\/[0-9]+\\.[0-9]+",       "GNU bash, version [0-9]+",
                            "OpenSSH_[0-9]+\\.[0-9]+p[0-9]+", "BusyBox v[0-9]+\\.[0-9]+",
                            "curl [0-9]+\\.[0-9]+\\.[0-9]+",  "dockerversion\\.Version=[0-9]+"};
    const std::string rules = scratch.file("rules.yar", contentRules(patterns));
    Turns turns;
    turns.add("8 patterns in /usr/bin",
              scanOf(scratch, "patterns", contentSignatures(patterns, "/usr/bin"), "/"));
    turns.add("yara -N, the same patterns", {"yara", "-N", "-r", "-p", "2", rules, "/usr/bin"}, true);
    turns.measure(std::min(rounds, 3));
    for (const char* name : {"8 patterns in /usr/bin", "yara -N, the same patterns"})
        print(turns, name, "8 patterns in /usr/bin", "");
}

void smallFiles(const Scratch& scratch, const std::string& folder, int rounds) {
    const std::string examples = signaturesIn(ZUK_SOURCE_DIR "/tests/data/signatures/examples.xml");
    const SmallFiles tree(folder, kSmallFiles);
    Turns turns;
    turns.addFloor(tree.path());
    turns.add("28 examples, 1,000,000 files", scanOf(scratch, "small", examples, tree.path()));
    turns.add("find, 1,000,000 files", {"find", tree.path(), "-xdev"}, true);
    turns.measure(rounds);
    print(turns, "28 examples, 1,000,000 files", "floor", "1.50");
    print(turns, "find, 1,000,000 files", "floor", "");
    std::printf("%-34s %9.1f MiB %34s 64 MiB\n", "their peak memory",
                turns.peak("28 examples, 1,000,000 files") / (1024 * 1024), "");
}

std::string temporaryFolder() {
    const char* folder = std::getenv("TMPDIR");
    return folder == nullptr ? "/tmp" : folder;
}

}  // namespace

int main(int argc, char** argv) try {
    const int rounds = numberArgument(argc, argv, 1, 7);
    const std::string folder = argc > 2 ? argv[2] : temporaryFolder();
    if (rounds < 1 || !std::filesystem::is_directory(folder)) {
        std::fprintf(stderr, "usage: %s [ROUNDS [FOLDER]]\n", argv[0]);
        return 2;
    }
    const Scratch scratch(folder);
    std::printf("%-34s %9s %8s  %-28s %s\n", "", "ms", "ratio", "to", "limit");
    // First, while this process is small: the peak of a child begins with that of its parent.
    smallFiles(scratch, folder, rounds);
    wholeMachine(scratch, rounds);
    withoutWalk(scratch, rounds);
    againstOscap(scratch, rounds);
    againstYara(scratch, rounds);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
