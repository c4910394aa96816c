#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(NumberVersions, DecimalFractions) {
    const VersionCase rows[] = {
        {"1.10", "=", "1.1"},
        {"1.9", ">", "1.10"},
        {"10", ">", "9"},
        {"007", "=", "7"},
        {"0.5", "=", ".5"},
        {"5.", "=", "5"},
        {"-1", "<", "1"},
        {"-2", "<", "-1"},
        {"-1.5", "<", "-1.05"},
        {"-0", "=", "0"},
        {"+3", "=", "3"},
        {" 3\n", "=", "3"},
        {"123456789012345678901234567890.1", "<", "123456789012345678901234567890.2"},
    };
    expectOrders(Scheme::kNumber, rows);
}

TEST(NumberVersions, WhatIsNoNumber) {
    const VersionCase rows[] = {
        {"", "refused", "1"},    {".", "refused", "1"},    {"-", "refused", "1"},   {"1.2.3", "refused", "1"},
        {"1e3", "refused", "1"}, {"0x10", "refused", "1"}, {"1,5", "refused", "1"}, {"one", "refused", "1"},
        {"1 2", "refused", "1"}, {"--1", "refused", "1"},
    };
    expectOrders(Scheme::kNumber, rows);
}

}  // namespace
}  // namespace zuksw
