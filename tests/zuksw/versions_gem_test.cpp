#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(GemVersions, NumbersBeforeLetters) {
    const VersionCase rows[] = {
        {"1.0", "=", "1"},
        {"1.0.0", "=", "1"},
        {"1.8.2", ">", "0.0.0"},
        {"1.8.2", ">", "1.8.2.a"},
        {"1.8.2.b", ">", "1.8.2.a"},
        {"1.8.2.a", ">", "1.8.1"},
        {"1.8.2.a10", ">", "1.8.2.a9"},
        {"1.2.b1", "=", "1.2.b.1"},
        {"0.beta.1", "=", "0.0.beta.1"},
        {"0.0.beta", "<", "0.0.beta.1"},
        {"0.0.beta", "<", "0.beta.1"},
        {"5.a", "<", "5.0.0.rc2"},
        {"5.x", ">", "5.0.0.rc2"},
        {"1.9.3", "<", "1.10"},
        {"1.0.B", "<", "1.0.a"},
        {"3.99999999999999999999999", "<", "3.100000000000000000000000"},
    };
    expectOrders(Scheme::kGem, rows);
}

TEST(GemVersions, AHyphenMeansPre) {
    const VersionCase rows[] = {
        {"1.0-1", "=", "1.0.pre.1"},
        {"1.0-a", "<", "1.0"},
    };
    expectOrders(Scheme::kGem, rows);
}

TEST(GemVersions, EmptyIsZeroAndSpaceDoesNotCount) {
    const VersionCase rows[] = {
        {"", "=", "0"},
        {" 1.0\n", "=", "1.0"},
    };
    expectOrders(Scheme::kGem, rows);
}

TEST(GemVersions, WhatIsNoGemVersion) {
    const VersionCase rows[] = {
        {"junk", "refused", "1"}, {"1..2", "refused", "1"}, {".1", "refused", "1"},
        {"1.", "refused", "1"},   {"1a", "refused", "1"},   {"1.2 3.4", "refused", "1"},
        {"1_0", "refused", "1"},  {"1.0-", "refused", "1"}, {"1.0-a..b", "refused", "1"},
    };
    expectOrders(Scheme::kGem, rows);
}

}  // namespace
}  // namespace zuksw
