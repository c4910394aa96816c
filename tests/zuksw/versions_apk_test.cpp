#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(ApkVersions, NumbersLettersAndRevisions) {
    const VersionCase rows[] = {
        {"2.34", ">", "0.1.0_alpha"},   {"1.0.4-r3", "<", "1.0.4-r4"},
        {"1.0.4-r4", "<", "1.6"},       {"0.7-r1", "<", "1.0.0"},
        {"1.0", "<", "1.0.1"},          {"1.0", "<", "1.0a"},
        {"1.0a", "<", "1.0b"},          {"1.0a", "<", "1.0.1"},
        {"2.2.39-r1", ">", "1.0.4-r3"}, {"1.2.3", "=", "1.2.3"},
        {"1.2.3", "<", "1.2.3-r0"},     {"1.2.3-r9", "<", "1.2.3-r10"},
        {"20071109", ">", "20060512"},  {"1.99999999999999999999998", "<", "1.99999999999999999999999"},
    };
    expectOrders(Scheme::kApk, rows);
}

TEST(ApkVersions, ALeadingZeroMakesADecimalFraction) {
    const VersionCase rows[] = {
        {"1.05", "<", "1.1"}, {"1.05", "<", "1.5"}, {"1.010", "<", "1.02"},
        {"1.0", "<", "1.00"}, {"01.0", "=", "1.0"},
    };
    expectOrders(Scheme::kApk, rows);
}

TEST(ApkVersions, SuffixesBeforeAndAfterARelease) {
    const VersionCase rows[] = {
        {"1.1_alpha1", "<", "1.1"},
        {"1.3_alpha", "<", "1.3_alpha2"},
        {"1.3_alpha", "<", "1.3_beta"},
        {"1.3_beta", "<", "1.3_pre"},
        {"1.3_pre", "<", "1.3_rc"},
        {"1.3_rc", "<", "1.3"},
        {"1.3", "<", "1.3_cvs"},
        {"1.3_cvs", "<", "1.3_svn"},
        {"1.3_svn", "<", "1.3_git"},
        {"1.3_git", "<", "1.3_hg"},
        {"1.3_hg", "<", "1.3_p"},
        {"1.3_p1", "<", "1.3_p2"},
        {"0.1.0_alpha_pre2", "<", "0.1.0_alpha"},
        {"1.0.4_p47", "<", "1.0.5"},
        {"9.2_p1-r0", ">", "9.2-r5"},
        {"1.2_rc1-r5", "<", "1.2-r0"},
        {"1.2~0", "<", "1.2~1"},
    };
    expectOrders(Scheme::kApk, rows);
}

TEST(ApkVersions, WhatItsGrammarHasNoPlaceFor) {
    const VersionCase rows[] = {
        {"", "refused", "1"},          {"a", "refused", "1"},     {"1.", "refused", "1"},
        {"1..2", "refused", "1"},      {"1.0ab", "refused", "1"}, {"1.0a1", "refused", "1"},
        {"1.0_foo", "refused", "1"},   {"1.0-1", "refused", "1"}, {"1.0-r", "refused", "1"},
        {"1.0-r1_p1", "refused", "1"}, {"1.0 ", "refused", "1"},  {"1.0A", "refused", "1"},
        {"v1", "refused", "1"},
    };
    expectOrders(Scheme::kApk, rows);
}

}  // namespace
}  // namespace zuksw
