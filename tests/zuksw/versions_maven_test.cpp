#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(MavenVersions, TheOrderOfTheSpecification) {
    const VersionCase rows[] = {
        {"1", "<", "1.1"},
        {"1-snapshot", "<", "1"},
        {"1", "<", "1-sp"},
        {"1-foo2", "<", "1-foo10"},
        {"1.foo", "=", "1-foo"},
        {"1-foo", "<", "1-1"},
        {"1-1", "<", "1.1"},
        {"1.ga", "=", "1-ga"},
        {"1-ga", "=", "1-0"},
        {"1-0", "=", "1.0"},
        {"1.0", "=", "1"},
        {"1-sp", ">", "1-ga"},
        {"1-sp.1", ">", "1-ga.1"},
        {"1-sp-1", "<", "1-ga-1"},
        {"1-a1", "=", "1-alpha-1"},
        {"1-b2", "=", "1-beta-2"},
        {"1-m3", "=", "1-milestone-3"},
        {"1-cr1", "=", "1-rc1"},
        {"1-alpha", "<", "1-beta"},
        {"1-beta", "<", "1-milestone"},
        {"1-milestone", "<", "1-rc"},
        {"1-rc", "<", "1-SNAPSHOT"},
        {"1-SNAPSHOT", "<", "1"},
        {"1-a", ">", "1"},  // not before a digit: no alpha
        {"1-xyz", ">", "1-sp"},
        {"1.0-FINAL", "=", "1.0.RELEASE"},
    };
    expectOrders(Scheme::kMaven, rows);
}

TEST(MavenVersions, WhatMeansNothingIsTrimmed) {
    const VersionCase rows[] = {
        {"1.0.0", "=", "1"},     {"1.final", "=", "1"},           {"1.", "=", "1"},
        {"1-", "=", "1"},        {"1.0.0-foo.0.0", "=", "1-foo"}, {"1.0.0-0.0.0", "=", "1"},
        {"1.0-rc", "=", "1-rc"}, {"1-0-a1", "=", "1-a1"},
    };
    expectOrders(Scheme::kMaven, rows);
}

TEST(MavenVersions, NumbersOfAnyLength) {
    const VersionCase rows[] = {
        {"20190126.230843", "<", "1234567890.12345"},
        {"123456789012345.1H.5-beta", "<", "12345678901234567890.1H.5-beta"},
        {"1.2.3.4.5.6.7.8.9", "<", "1.2.3.4.5.6.7.8.10"},
    };
    expectOrders(Scheme::kMaven, rows);
}

}  // namespace
}  // namespace zuksw
