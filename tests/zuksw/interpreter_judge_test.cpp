// Programs of this machine say their own versions, and the catalogue must find them with just these. The test
// runs them; the scanner never does.

#include <algorithm>
#include <sstream>

#include "tests/support/files.h"
#include "tests/zuksw/judge.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

struct Interpreter {
    const char* program;
    const char* signature;  // its name in the catalogue
    const char* question;   // makes it print its version, and the directory that it is installed in
};

constexpr Interpreter kInterpreters[] = {
    {"python3", "Python interpreter",
     "python3 -c 'import os, sys; print(\"%d.%d.%d\" % sys.version_info[:3]); "
     "print(os.path.realpath(sys.base_prefix))'"},
    {"ruby", "Ruby runtime", "ruby -rrbconfig -e 'puts RUBY_VERSION, RbConfig::CONFIG[\"prefix\"]'"},
    {"node", "Node.js runtime",
     "node -p 'process.versions.node + \"\\n\" + "
     "path.dirname(path.dirname(fs.realpathSync(process.execPath)))'"},
    {"perl", "Perl", "perl -e 'printf \"%vd\\n\", $^V' && dirname \"$(realpath \"$(command -v perl)\")\""},
    {"php", "PHP command line",
     "php -r 'echo explode(\"-\", PHP_VERSION)[0], \"\\n\", realpath(PHP_BINARY), \"\\n\";'"},
    {"go", "Go toolchain",
     "go version | sed -E 's/^go version go([0-9.]+).*/\\1/' && realpath \"$(go env GOROOT)\""},
    {"java", "Java runtime",
     "java -XshowSettings:properties -version 2>&1 | sed -nE 's/^ *java.version = (.*)/\\1/p; s/^ *java.home "
     "= (.*)/\\1/p' | "
     "sort"},
    {"git", "Git",
     "git --version | sed -E 's/^git version ([0-9.]+).*/\\1/' && realpath \"$(git --exec-path)\""},
};

struct Installation {
    const Interpreter* interpreter;
    std::string version;
    std::string place;
};

std::vector<Installation> installations() {
    std::vector<Installation> found;
    for (const Interpreter& interpreter : kInterpreters) {
        if (!isInstalled(interpreter.program)) continue;
        const ShellResult said = shell(interpreter.question);
        std::istringstream lines(said.out);
        Installation one{&interpreter, "", ""};
        if (said.status != 0 || !std::getline(lines, one.version) || !std::getline(lines, one.place))
            continue;
        if (one.version[0] == '/') std::swap(one.version, one.place);
        found.push_back(one);
    }
    return found;
}

// All signatures of the catalogue's files, without their root elements.
std::string catalogue() {
    std::string text;
    for (const auto& file : std::filesystem::directory_iterator(ZUK_SOURCE_DIR "/signatures")) {
        if (file.path().extension() != ".xml") continue;
        const std::string whole = readFile(file.path());
        const std::size_t begin = whole.find("<Signature ");
        const std::size_t end = whole.rfind("</Signatures>");
        if (begin != whole.npos && end != whole.npos) text += whole.substr(begin, end - begin);
    }
    return text;
}

class InterpreterJudgeTest : public ScanTest {};

TEST_F(InterpreterJudgeTest, TheCatalogueFindsWhatProgramsSayOfThemselves) {
    const std::vector<Installation> installed = installations();
    if (installed.empty()) GTEST_SKIP() << "none of the interpreters is installed";
    usePrefix_ = false;
    Settings roots;
    for (const Installation& one : installed) roots.emplace_back("search/Root", one.place);
    for (const char* place : {"/usr/bin", "/usr/lib"}) roots.emplace_back("search/Root", place);
    const ScanResult result = scan(catalogue(), roots);
    ASSERT_EQ(0, result.status) << result.messages;
    for (const Installation& one : installed) {
        const bool agreed =
            std::any_of(result.matches.begin(), result.matches.end(), [&](const Match& match) {
                if (match.name != one.interpreter->signature) return false;
                const auto version = match.variables.find("version");
                return version != match.variables.end() && version->second == one.version;
            });
        EXPECT_TRUE(agreed) << one.interpreter->program << " " << one.version << " in " << one.place;
    }
}

}  // namespace
