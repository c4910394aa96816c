#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(SemverVersions, TheOrderOfTheSpecification) {
    const VersionCase rows[] = {
        {"1.0.0", "<", "2.0.0"},
        {"2.0.0", "<", "2.1.0"},
        {"2.1.0", "<", "2.1.1"},
        {"1.9.0", "<", "1.10.0"},
        {"1.0.0-alpha", "<", "1.0.0"},
        {"1.0.0-alpha", "<", "1.0.0-alpha.1"},
        {"1.0.0-alpha.1", "<", "1.0.0-alpha.beta"},
        {"1.0.0-alpha.beta", "<", "1.0.0-beta"},
        {"1.0.0-beta", "<", "1.0.0-beta.2"},
        {"1.0.0-beta.2", "<", "1.0.0-beta.11"},
        {"1.0.0-beta.11", "<", "1.0.0-rc.1"},
        {"1.0.0-rc.1", "<", "1.0.0"},
        {"1.0.0-A", "<", "1.0.0-a"},
        {"1.0.0--", "<", "1.0.0-a"},
        {"99999999999999999999999.999999999999999999.99999999999999999", ">", "99999999999999999999998.0.0"},
    };
    expectOrders(Scheme::kSemver, rows);
}

TEST(SemverVersions, BuildDoesNotCount) {
    const VersionCase rows[] = {
        {"1.0.0+a", "=", "1.0.0+b"},
        {"1.0.0+21AF26D3---117B344092BD", "=", "1.0.0"},
        {"1.0.0-rc.1+build.001", "=", "1.0.0-rc.1"},
    };
    expectOrders(Scheme::kSemver, rows);
}

TEST(SemverVersions, WhatTheSpecificationCallsInvalid) {
    const VersionCase rows[] = {
        {"", "refused", "1.0.0"},           {"1", "refused", "1.0.0"},
        {"1.2", "refused", "1.0.0"},        {"1.2.3.4", "refused", "1.0.0"},
        {"01.1.1", "refused", "1.0.0"},     {"1.01.1", "refused", "1.0.0"},
        {"1.1.01", "refused", "1.0.0"},     {"1.2.3-0123", "refused", "1.0.0"},
        {"1.2.3-", "refused", "1.0.0"},     {"1.2.3+", "refused", "1.0.0"},
        {"1.2.3-a..b", "refused", "1.0.0"}, {"1.2.3-a.", "refused", "1.0.0"},
        {"1.2.3+a+b", "refused", "1.0.0"},  {"1.2.3+.", "refused", "1.0.0"},
        {"v1.2.3", "refused", "1.0.0"},     {"alpha", "refused", "1.0.0"},
        {"1.1.2-é", "refused", "1.0.0"},    {"1.2.3 ", "refused", "1.0.0"},
        {"-1.0.3", "refused", "1.0.0"},
    };
    expectOrders(Scheme::kSemver, rows);
}

}  // namespace
}  // namespace zuksw
