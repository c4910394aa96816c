// find, stat, sha256sum and readelf judge what conditions on files select and what they tell of them.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "tests/support/files.h"
#include "tests/zuksw/judge.h"
#include "tests/zuksw/numbers.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

using Paths = std::set<std::string>;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

// A condition on files in both languages.
struct Question {
    std::string signature;  // attributes of <File>
    std::vector<std::string> find;
};

class FileJudgeTest : public ScanTest {
  protected:
    // A tree of files, directories and links of every kind, size and mode.
    void growTree() {
        std::vector<std::string> directories = {""};
        for (int i = 0; i < 40; ++i) {
            directories.push_back(directories[numbers_.below(directories.size())] + "/" + name());
            directory(directories.back());
        }
        for (int i = 0; i < 300; ++i) {
            const std::string path = directories[numbers_.below(directories.size())] + "/" + name();
            if (std::filesystem::exists(std::filesystem::symlink_status(treePath(path)))) continue;
            const std::size_t kind = numbers_.below(10);
            if (kind == 0) {
                mkfifo(treePath(path).c_str(), 0644);
            } else if (kind < 3) {
                link(name(), path);
            } else {
                file(path, std::string(numbers_.below(5) * numbers_.below(50), 'x'),
                     kModes[numbers_.below(4)]);
            }
        }
    }

    std::string name() {
        constexpr const char* kPieces[] = {"a", "b", "lib", "so", ".",    "-", "1",
                                           "2", "X", "[",   "*",  "\xE9", " "};
        std::string text = "n";
        for (std::size_t left = numbers_.below(4); left > 0; --left)
            text += kPieces[numbers_.below(std::size(kPieces))];
        return text;
    }
    std::string glob() {
        constexpr const char* kPieces[] = {"*", "?", "a",   "lib",   "[ab]", "[!a]",
                                           "1", ".", "\\[", "[1-9]", "*so*", "[]x]"};
        std::string text = numbers_.below(4) == 0 ? "" : "n";
        for (std::size_t left = 1 + numbers_.below(3); left > 0; --left)
            text += kPieces[numbers_.below(std::size(kPieces))];
        return text;
    }

    Question question() {
        Question question;
        const std::string wanted = glob();
        question.signature = "name=\"" + xml(wanted) + "\"";
        question.find = {"-name", wanted};
        const std::size_t type = numbers_.below(4);
        constexpr const char* kTypes[] = {"", " type=\"directory\"", " type=\"symlink\"", ""};
        constexpr const char* kLetters[] = {"f", "d", "l", "f"};
        question.signature += kTypes[type];
        question.find.insert(question.find.end(), {"-type", kLetters[type]});
        if (type % 3 != 0) return question;
        const std::string bound = std::to_string(numbers_.below(100));
        switch (numbers_.below(5)) {
            case 0:
                question.signature += " minSize=\"" + bound + "\"";
                question.find.insert(question.find.end(), {"!", "-size", "-" + bound + "c"});
                break;
            case 1:
                question.signature += " maxSize=\"" + bound + "\"";
                question.find.insert(question.find.end(), {"!", "-size", "+" + bound + "c"});
                break;
            case 2:
                question.signature += " executable=\"yes\"";
                question.find.insert(question.find.end(), {"-perm", "/111"});
                break;
            case 3:
                question.signature += " executable=\"no\"";
                question.find.insert(question.find.end(), {"!", "-perm", "/111"});
                break;
            default:
                break;
        }
        return question;
    }

    // What find finds below the tree.
    Paths found(const std::vector<std::string>& predicates) const {
        std::vector<std::string> words = {"env", "LC_ALL=C", "find", tree_.path(), "-mindepth", "1"};
        words.insert(words.end(), predicates.begin(), predicates.end());
        words.insert(words.end(), {"-printf", "/%P\\n"});
        const std::vector<std::string> lines = linesOf(ask(words).output);
        return {lines.begin(), lines.end()};
    }
    // A signature that reports the path of each file that the condition selects.
    static std::string signatureFor(const std::string& guid, const std::string& file) {
        return "<Signature guid=\"" + guid + "\" name=\"n\" place=\"${f.path}\"><Detect><File as=\"f\" " +
               file + "/></Detect><Report><Variable name=\"p\" value=\"${f.path}\"/></Report></Signature>";
    }
    // What the scanner tells of each file that the condition selects.
    std::map<std::string, std::string> toldOf(const std::string& file, const std::string& value) {
        const ScanResult result = scan(
            "<Signature guid=\"g\" name=\"n\" place=\"${f.path}\"><Detect><File as=\"f\" " + file +
            "/></Detect><Report><Variable name=\"p\" value=\"${f.path}\"/><Variable name=\"v\" value=\"" +
            value + "\"/></Report></Signature>");
        std::map<std::string, std::string> told;
        for (const Match& match : result.matches) told[match.variables.at("p")] = match.variables.at("v");
        return told;
    }

    static constexpr mode_t kModes[] = {0644, 0755, 0600, 0711};
    Numbers numbers_;
};

// A path as the result file shows it: the one name that is no UTF-8 is written with its byte in hex.
std::string shown(std::string path) {
    for (std::size_t at = path.find('\xE9'); at != path.npos; at = path.find('\xE9'))
        path.replace(at, 1, "\\xE9");
    return path;
}

TEST_F(FileJudgeTest, FindFindsTheSame) {
    if (!isInstalled("find")) GTEST_SKIP() << "find is not installed";
    growTree();
    const int count = judgedCases(200);
    std::vector<Question> questions;
    std::string signatures;
    for (int i = 0; i < count; ++i) {
        questions.push_back(question());
        signatures += signatureFor(std::to_string(i), questions.back().signature);
    }
    std::vector<Paths> ours(questions.size());
    const ScanResult result = scan(signatures);
    EXPECT_FALSE(result.has("signature-invalid")) << result.warnings;
    for (const Match& match : result.matches) ours[std::stoul(match.guid)].insert(match.variables.at("p"));
    std::size_t total = 0;
    for (std::size_t i = 0; i < questions.size(); ++i) {
        Paths theirs;
        for (const std::string& path : found(questions[i].find)) theirs.insert(shown(path));
        EXPECT_EQ(theirs, ours[i]) << questions[i].signature;
        total += theirs.size();
    }
    EXPECT_GT(total, questions.size());  // most questions have an answer
}

TEST_F(FileJudgeTest, FindFindsTheSameByPaths) {
    if (!isInstalled("find")) GTEST_SKIP() << "find is not installed";
    growTree();
    struct PathCase {
        const char* signature;
        std::vector<std::string> find;
    };
    const PathCase cases[] = {
        {"path=\"/*\"", {"-maxdepth", "1", "-type", "f"}},
        {"path=\"/**\"", {"-type", "f"}},
        {"path=\"/n*/*\"", {"-mindepth", "2", "-maxdepth", "2", "-path", "*/n*/*", "-type", "f"}},
        {"path=\"**/n?\"", {"-name", "n?", "-type", "f"}},
        {"path=\"/*/**/n*\"", {"-mindepth", "2", "-name", "n*", "-type", "f"}},
        {"name=\"*\" under=\"/\" type=\"directory\"", {"-type", "d"}},
        {"path=\"/**\" type=\"symlink\" target=\"n*\"", {"-type", "l", "-lname", "n*"}},
    };
    for (const PathCase& c : cases) {
        Paths theirs;
        Paths ours;
        for (const std::string& path : found(c.find)) theirs.insert(shown(path));
        for (const Match& match : scan(signatureFor("g", c.signature)).matches)
            ours.insert(match.variables.at("p"));
        EXPECT_FALSE(theirs.empty()) << c.signature;
        EXPECT_EQ(theirs, ours) << c.signature;
    }
}

TEST_F(FileJudgeTest, StatTellsTheSame) {
    if (!isInstalled("stat")) GTEST_SKIP() << "stat is not installed";
    growTree();
    const auto ours = toldOf("name=\"n*\"", "${f.size} ${f.mode} ${f.uid} ${f.gid} ${f.mtime}");
    std::map<std::string, std::string> theirs;
    const ShellResult judge = shell("cd " + ::quoted(tree_.path()) +
                                    " && TZ=UTC LC_ALL=C find . -type f -exec stat --printf "
                                    "'%n\\t%s %04a %u %g %y\\n' {} +");
    for (const std::string& line : linesOf(judge.out)) {
        const std::size_t tab = line.find('\t');
        std::string facts = line.substr(tab + 1);
        // "2026-01-02 03:04:05.123456789 +0000" as "2026-01-02T03:04:05Z"
        facts = facts.substr(0, facts.rfind('.')) + "Z";
        facts[facts.rfind(' ')] = 'T';
        theirs[shown(line.substr(1, tab - 1))] = facts;
    }
    EXPECT_FALSE(ours.empty());
    EXPECT_EQ(theirs, ours);
}

TEST_F(FileJudgeTest, Sha256sumTellsTheSame) {
    if (!isInstalled("sha256sum")) GTEST_SKIP() << "sha256sum is not installed";
    for (int i = 0; i < 60; ++i) {
        std::string bytes;
        for (std::size_t left = numbers_.below(3000) * numbers_.below(9); left > 0; --left)
            bytes += static_cast<char>(numbers_.below(256));
        file("/f" + std::to_string(i), bytes);
    }
    std::map<std::string, std::string> theirs;
    for (const std::string& line : linesOf(shell("cd " + ::quoted(tree_.path()) + " && sha256sum f*").out)) {
        theirs["/" + line.substr(66)] = line.substr(0, 64);
    }
    const auto ours = toldOf("name=\"f*\"", "${f.sha256}");
    EXPECT_EQ(60U, ours.size());
    EXPECT_EQ(theirs, ours);
}

// Real libraries and programs of this machine, as many as one readelf looks at in a moment.
TEST_F(FileJudgeTest, ReadelfTellsTheSame) {
    if (!isInstalled("readelf")) GTEST_SKIP() << "readelf is not installed";
    const ShellResult list = shell(
        "find -L /usr/lib /usr/bin -maxdepth 2 -type f \\( -name 'lib[a-f]*.so.*' -o -name '[a-d]*' \\) "
        "-size -400k -readable 2>/dev/null | LC_ALL=C sort | head -80");
    std::map<std::string, std::string> theirs;
    for (const std::string& path : linesOf(list.out)) {
        const std::string text = ask({"env", "LC_ALL=C", "readelf", "-W", "-h", "-d", "-n", path}).output;
        const auto after = [&](const std::string& mark, const std::string& end) {
            const std::size_t at = text.find(mark);
            if (at == std::string::npos) return std::string("-");
            const std::size_t begin = text.find_first_not_of(' ', at + mark.size());
            return text.substr(begin, text.find_first_of(end, begin) - begin);
        };
        if (text.find("ELF Header:") == std::string::npos) continue;
        const std::string real = std::filesystem::canonical(path);
        theirs[real] = after("Class:", "\n").substr(3) + " " + after("Library soname: [", "]") + " " +
                       after("Build ID: ", "\n");
        file(real, readFile(path), 0644);
    }
    const auto ours =
        toldOf("name=\"*\" format=\"elf\"", "${f.elf.class} ${f.elf.soname:--} ${f.elf.buildId:--}");
    EXPECT_GT(ours.size(), 20U);
    EXPECT_EQ(theirs, ours);
}

}  // namespace
