#include "tests/zuksw/version_cases.h"

#include "tests/zuksw/judge.h"

namespace zuksw {
namespace {

TEST(DebVersions, EpochUpstreamRevision) {
    const VersionCase rows[] = {
        {"1.0-1", "<", "1.0-2"}, {"1:0.1", ">", "9.9"},    {"0:1.0", "=", "1.0"},
        {"1.0", "=", "1.0-0"},   {"1.0-1", ">", "1.0"},    {"1.0-1-1", "<", "1.0-2-1"},
        {"01.02", "=", "1.2"},   {"1.2.3", "<", "1.2.10"}, {"2147483647:1", ">", "1:1"},
    };
    expectOrders(Scheme::kDeb, rows);
}

TEST(DebVersions, CharactersByWeight) {
    const VersionCase rows[] = {
        {"1.0~rc1", "<", "1.0"}, {"1.0~~", "<", "1.0~"},
        {"1.0~", "<", "1.0"},    {"1.0a", ">", "1.0"},
        {"1.0a", "<", "1.0+"},   {"1.0Z", "<", "1.0a"},
        {"1.0.", ">", "1.0"},    {"1.0~rc1-1", "<", "1.0-1"},
        {"1.2a", "<", "1.2."},   {"3.0.99-1", ">", "3.0.19-1~deb12u2"},
    };
    expectOrders(Scheme::kDeb, rows);
}

TEST(DebVersions, VeryLongDigitRuns) {
    const VersionCase rows[] = {
        {"1.100000000000000000000000000001", ">", "1.100000000000000000000000000000"},
    };
    expectOrders(Scheme::kDeb, rows);
}

TEST(DebVersions, EmptyIsBeforeAllAndBlanksDoNotCount) {
    const VersionCase rows[] = {
        {"", "<", "0~"},
        {"", "=", ""},
        {" 1.0\t", "=", "1.0"},
    };
    expectOrders(Scheme::kDeb, rows);
}

TEST(DebVersions, WhatDpkgRefuses) {
    const VersionCase rows[] = {
        {"a:1", "refused", "1"},          {":1", "refused", "1"},   {"1:", "refused", "1"},
        {"1.0-", "refused", "1"},         {"-1", "refused", "1"},   {"1 0", "refused", "1"},
        {"2147483648:1", "refused", "1"}, {"-1:1", "refused", "1"}, {"  ", "refused", "1"},
    };
    expectOrders(Scheme::kDeb, rows);
}

// dpkg itself says what is right. It takes arguments that begin with a hyphen for options, so there are none.
TEST(DebVersions, AgreeWithDpkgOnGeneratedCases) {
    if (!isInstalled("dpkg")) GTEST_SKIP() << "dpkg is not installed";
    VersionMaker maker(
        {"0", "1", "2", "10", "00", ".", ".", "-", "~", "~~", "+", "a", "b", "Z", ":", "1:", "rc", "_", " "});
    for (int i = 0; i < judgedCases(1000); ++i) {
        const std::string a = "1" + maker.make();
        const std::string b = "1" + maker.alike(a);
        const Verdict earlier = ask({"dpkg", "--compare-versions", a, "lt", b});
        std::string_view expected = "refused";
        if (earlier.status == 0) {
            expected = "<";
        } else if (earlier.status == 1) {
            expected = ask({"dpkg", "--compare-versions", a, "eq", b}).status == 0 ? "=" : ">";
        }
        ASSERT_EQ(orderSign(compareVersions(Scheme::kDeb, a, b)), expected) << a << " and " << b;
    }
}

}  // namespace
}  // namespace zuksw
