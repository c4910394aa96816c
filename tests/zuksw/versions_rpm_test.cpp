#include "tests/zuksw/version_cases.h"

#include <sstream>

#include "tests/support/temporary_folder.h"
#include "tests/zuksw/judge.h"

namespace zuksw {
namespace {

TEST(RpmVersions, EpochVersionRelease) {
    const VersionCase rows[] = {
        {"1.0-1", "<", "1.0-2"},   {"1:1.0", ">", "2.0"},
        {"0:1.0-1", "=", "1.0-1"}, {"1.0", "=", "1.0-5"},  // no release: not compared
        {"1.0-1", "=", "1.0"},     {"1.0-1.el9", "<", "1.0-1.el10"},
        {":1.0", "=", "1.0"},
    };
    expectOrders(Scheme::kRpm, rows);
}

TEST(RpmVersions, Parts) {
    const VersionCase rows[] = {
        {"1.0", "=", "1.0"},       {"1.0", "<", "2.0"},
        {"2.0.1", ">", "2.0"},     {"2.0.1a", ">", "2.0.1"},
        {"5.5p1", "<", "5.5p10"},  {"10xyz", "<", "10.1xyz"},
        {"xyz10", "<", "xyz10.1"}, {"xyz.4", "<", "8"},
        {"xyz.4", "<", "2"},       {"5.5p2", "<", "5.6p1"},
        {"5.6p1", "<", "6.5p1"},   {"6.0.rc1", ">", "6.0"},
        {"10b2", ">", "10a1"},     {"1.0aa", ">", "1.0a"},
        {"10.0001", "=", "10.1"},  {"10.0039", "<", "10.1000"},
        {"4.999.9", "<", "5.0"},   {"20101121", "<", "20101122"},
        {"2_0", "=", "2.0"},       {"a", "=", "a_"},
        {"a+", "=", "a_"},         {"+", "=", "_"},
        {"1.1.0", ">", "1.1.a"},   {"1b.fc17", "<", "1.fc17"},
    };
    expectOrders(Scheme::kRpm, rows);
}

TEST(RpmVersions, TildeStandsBeforeTheEndAndCaretAfterIt) {
    const VersionCase rows[] = {
        {"1.0~rc1", "<", "1.0"},
        {"1.0~rc1", "<", "1.0arc1"},
        {"1.0~rc1", "<", "1.0~rc2"},
        {"1.0~rc1~git123", "<", "1.0~rc1"},
        {"1.0^", ">", "1.0"},
        {"1.0^git1", ">", "1.0"},
        {"1.0^git1", "<", "1.0^git2"},
        {"1.0^git1", "<", "1.01"},
        {"1.0^20160101", "<", "1.0.1"},
        {"1.0~rc1^git1", ">", "1.0~rc1"},
        {"1.0^git1~pre", "<", "1.0^git1"},
        {"1.0~", "<", "1.0^"},
    };
    expectOrders(Scheme::kRpm, rows);
}

TEST(RpmVersions, EmptyIsRefused) {
    const VersionCase rows[] = {
        {"", "refused", "1"},
    };
    expectOrders(Scheme::kRpm, rows);
}

// rpm compares a missing release too, so both texts have one or neither has.
TEST(RpmVersions, AgreeWithRpmOnGeneratedCases) {
    if (!isInstalled("rpm")) GTEST_SKIP() << "rpm is not installed";
    VersionMaker maker(
        {"0", "1", "2", "10", "00", ".", ".", "~", "^", "+", "a", "b", "Z", ":", "1:", "rc", "_", "el9"});
    std::string table;
    std::vector<std::pair<std::string, std::string>> pairs;
    for (int i = 0; i < judgedCases(5000); ++i) {
        const std::string version = maker.make();
        const std::string release = i % 2 == 0 ? "" : "-" + maker.make();
        pairs.emplace_back(version + release, maker.alike(version) + release);
        if (pairs.back().second == release) pairs.back().second = "0" + release;
        table += pairs.back().first + "\t" + pairs.back().second + "\n";
    }
    const TemporaryFolder folder;
    const std::string path = folder.file("pairs", table);
    const Verdict verdict =
        ask({"rpm", "--eval",
             "%{lua: for line in io.lines('" + path +
                 "') do "
                 "local a, b = line:match('([^\t]*)\t([^\t]*)'); print(rpm.vercmp(a, b) .. '\\n') end}"});
    std::istringstream answers(verdict.output);
    for (const auto& [a, b] : pairs) {
        int expected = 7;
        answers >> expected;
        ASSERT_EQ(compareVersions(Scheme::kRpm, a, b).value_or(9), expected) << a << " and " << b;
    }
}

}  // namespace
}  // namespace zuksw
