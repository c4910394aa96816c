// oscap judges what it and signatures both know: trees of conditions with three values, and installed
// packages.

#include <unistd.h>

#include <fstream>
#include <map>
#include <sstream>

#include "tests/zuksw/judge.h"
#include "tests/zuksw/numbers.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

// A file of OVAL definitions.
class Oval {
  public:
    // criteria: the content of the definition's <criteria>, attributes included: "><criterion .../>".
    void define(const std::string& criteria) {
        const std::string id = std::to_string(++count_);
        definitions_ +=
            "<definition id=\"oval:t:def:" + id +
            "\" version=\"1\" class=\"miscellaneous\"><metadata><title>t</title><description>d</description>"
            "</metadata><criteria" +
            criteria + "</criteria></definition>";
    }
    std::string tests, objects, states;

    std::string text() const {
        const std::string space = "http://oval.mitre.org/XMLSchema/oval-";
        return "<oval_definitions xmlns=\"" + space + "definitions-5\" xmlns:i=\"" + space +
               "definitions-5#independent\" xmlns:l=\"" + space +
               "definitions-5#linux\"><generator xmlns:o=\"" + space +
               "common-5\"><o:schema_version>5.10</o:schema_version><o:timestamp>2020-01-01T00:00:00</"
               "o:timestamp>"
               "</generator><definitions>" +
               definitions_ + "</definitions><tests>" + tests + "</tests><objects>" + objects +
               "</objects><states>" + states + "</states></oval_definitions>";
    }

  private:
    int count_ = 0;
    std::string definitions_;
};

class OvalJudgeTest : public ScanTest {
  protected:
    // What oscap says of each definition: "true", "false" or "unknown".
    std::map<int, std::string> judge(const Oval& oval) const {
        const Verdict verdict =
            ask({"oscap", "oval", "eval", "--skip-validation", work_.file("oval.xml", oval.text())});
        EXPECT_EQ(0, verdict.status);
        std::map<int, std::string> answers;
        std::istringstream lines(verdict.output);
        const std::string head = "Definition oval:t:def:";
        for (std::string line; std::getline(lines, line);) {
            if (line.compare(0, head.size(), head) != 0) continue;
            answers[std::stoi(line.substr(head.size()))] = line.substr(line.rfind(' ') + 1);
        }
        return answers;
    }
};

// A tree of conditions, written for both.
struct Tree {
    std::string oval;
    std::string signature;
};

class TreeMaker {
  public:
    Tree make(int depth) {
        const std::size_t kind = numbers_.below(depth == 0 ? 3 : 8);
        if (kind < 3) return leaf(kind);
        const bool all = kind % 2 == 0;
        const bool negated = numbers_.below(3) == 0;
        Tree tree;
        for (std::size_t left = 1 + numbers_.below(4); left > 0; --left) {
            const Tree child = make(depth - 1);
            tree.oval += child.oval;
            tree.signature += child.signature;
        }
        tree.oval = "<criteria operator=\"" + std::string(all ? "AND" : "OR") + "\" negate=\"" +
                    (negated ? "true" : "false") + "\">" + tree.oval + "</criteria>";
        tree.signature = all ? "<All>" + tree.signature + "</All>" : any(tree.signature);
        if (negated) tree.signature = "<Not>" + tree.signature + "</Not>";
        return tree;
    }

  private:
    static Tree leaf(std::size_t kind) {
        constexpr const char* kConditions[] = {"<Test value=\"1\" eq=\"1\"/>", "<Test value=\"1\" eq=\"2\"/>",
                                               "<File path=\"/secret\" format=\"elf\"/>"};
        return {"<criterion test_ref=\"oval:t:tst:" + std::to_string(kind + 1) + "\"/>", kConditions[kind]};
    }
    // An Any is the same whether it stops at the first that holds or not.
    std::string any(const std::string& children) {
        const char* first = numbers_.below(2) == 0 ? " first=\"yes\"" : "";
        return numbers_.below(4) == 0 ? "<AtLeast count=\"1\">" + children + "</AtLeast>"
                                      : "<Any" + std::string(first) + ">" + children + "</Any>";
    }

    Numbers numbers_;
};

TEST_F(OvalJudgeTest, TreesOfThreeValues) {
    if (!isInstalled("oscap")) GTEST_SKIP() << "oscap is not installed";
    file("/secret", "\177ELF");
    Oval oval;
    oval.tests =
        "<i:family_test id=\"oval:t:tst:1\" version=\"1\" check=\"all\" comment=\"true\"><i:object "
        "object_ref=\"oval:t:obj:1\"/><i:state state_ref=\"oval:t:ste:1\"/></i:family_test>"
        "<i:family_test id=\"oval:t:tst:2\" version=\"1\" check=\"all\" comment=\"false\"><i:object "
        "object_ref=\"oval:t:obj:1\"/><i:state state_ref=\"oval:t:ste:2\"/></i:family_test>"
        "<i:unknown_test id=\"oval:t:tst:3\" version=\"1\" check=\"all\" comment=\"unknown\"/>";
    oval.objects = "<i:family_object id=\"oval:t:obj:1\" version=\"1\"/>";
    oval.states =
        "<i:family_state id=\"oval:t:ste:1\" version=\"1\"><i:family>unix</i:family></i:family_state>"
        "<i:family_state id=\"oval:t:ste:2\" version=\"1\"><i:family>windows</i:family></i:family_state>";
    const int count = judgedCases(1000);
    TreeMaker maker;
    std::vector<Tree> trees;
    std::string signatures;
    // Whether a tree is false is what its Not tells.
    for (int i = 1; i <= count; ++i) {
        trees.push_back(maker.make(4));
        oval.define(">" + trees.back().oval);
        const std::string number = std::to_string(i);
        signatures += "<Signature guid=\"t" + number + "\" name=\"n\"><Detect>" + trees.back().signature +
                      "</Detect></Signature><Signature guid=\"f" + number + "\" name=\"n\"><Detect><Not>" +
                      trees.back().signature + "</Not></Detect></Signature>";
    }
    const ScanResult result = scan(signatures, {{"content/Deny", "/secret"}, {"output/Evidence", "no"}});
    std::map<std::string, bool> matched;
    for (const Match& match : result.matches) matched[match.guid] = true;
    std::map<std::string, int> seen;
    std::map<int, std::string> answers = judge(oval);
    ASSERT_EQ(static_cast<std::size_t>(count), answers.size());
    for (const auto& [number, expected] : answers) {
        const std::string id = std::to_string(number);
        const std::string ours = matched["t" + id] ? "true" : matched["f" + id] ? "false" : "unknown";
        EXPECT_EQ(expected, ours) << trees[static_cast<std::size_t>(number - 1)].signature;
        ++seen[ours];
    }
    for (const char* value : {"true", "false", "unknown"}) EXPECT_GT(seen[value], count / 20) << value;
}

// Name and version of packages that are installed on this machine.
std::vector<std::pair<std::string, std::string>> installedPackages() {
    std::vector<std::pair<std::string, std::string>> packages;
    std::istringstream lines(
        ask({"dpkg-query", "-W", "-f", "${Package} ${Version} ${db:Status-Status} ${Multi-Arch}\\n"}).output);
    std::string name, version, state, rest;
    while (lines >> name >> version >> state && std::getline(lines, rest)) {
        if (state == "installed" && rest != " same") packages.emplace_back(name, version);
    }
    return packages;
}

TEST_F(OvalJudgeTest, VersionsOfInstalledPackages) {
    if (!isInstalled("oscap") || !isInstalled("dpkg-query")) GTEST_SKIP() << "oscap or dpkg is not installed";
    const auto packages = installedPackages();
    if (packages.empty()) GTEST_SKIP() << "nothing is installed by dpkg";
    usePrefix_ = false;
    constexpr std::pair<const char*, const char*> kOperators[] = {
        {"eq", "equals"},       {"ne", "not equal"},
        {"lt", "less than"},    {"le", "less than or equal"},
        {"gt", "greater than"}, {"ge", "greater than or equal"}};
    Numbers numbers;
    Oval oval;
    std::string signatures;
    std::vector<std::string> conditions;
    const int count = judgedCases(300);
    for (int i = 1; i <= count; ++i) {
        const auto& [name, version] = packages[numbers.below(packages.size())];
        // The version itself, or one that differs from it in a digit or a letter.
        std::string other = version;
        if (numbers.below(3) != 0)
            other[other.size() - 1 - numbers.below(std::min<std::size_t>(other.size(), 4))] =
                "0159ab"[numbers.below(6)];
        const std::string wanted = numbers.below(20) == 0 ? name + "-absent" : name;
        const auto& [ours, theirs] = kOperators[numbers.below(6)];
        const std::string id = std::to_string(i);
        const std::string evr = (other.find(':') == std::string::npos ? "0:" : "") + other;
        oval.define("><criterion test_ref=\"oval:t:tst:" + id + "\"/>");
        oval.tests +=
            "<l:dpkginfo_test id=\"oval:t:tst:" + id +
            "\" version=\"1\" check=\"at least one\" comment=\"c\"><l:object object_ref=\"oval:t:obj:" + id +
            "\"/><l:state state_ref=\"oval:t:ste:" + id + "\"/></l:dpkginfo_test>";
        oval.objects += "<l:dpkginfo_object id=\"oval:t:obj:" + id + "\" version=\"1\"><l:name>" + wanted +
                        "</l:name></l:dpkginfo_object>";
        oval.states += "<l:dpkginfo_state id=\"oval:t:ste:" + id +
                       "\" version=\"1\"><l:evr datatype=\"debian_evr_string\" operation=\"" + theirs +
                       "\">" + evr + "</l:evr></l:dpkginfo_state>";
        conditions.push_back("<Package manager=\"dpkg\" name=\"" + wanted + "\" " + ours + "=\"" + other +
                             "\"/>");
        signatures += "<Signature guid=\"" + id + "\" name=\"n\"><Detect>" + conditions.back() +
                      "</Detect></Signature>";
    }
    std::map<std::string, bool> matched;
    for (const Match& match : scan(signatures).matches) matched[match.guid] = true;
    std::map<int, std::string> answers = judge(oval);
    ASSERT_EQ(static_cast<std::size_t>(count), answers.size());
    for (const auto& [number, expected] : answers) {
        EXPECT_EQ(expected, matched[std::to_string(number)] ? "true" : "false")
            << conditions[static_cast<std::size_t>(number - 1)];
    }
}

}  // namespace
