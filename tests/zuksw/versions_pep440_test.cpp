#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(Pep440Versions, TheOrderOfTheSpecification) {
    const VersionCase rows[] = {
        {"1.dev0", "<", "1.0.dev456"},
        {"1.0.dev456", "<", "1.0a1"},
        {"1.0a1", "<", "1.0a2.dev456"},
        {"1.0a2.dev456", "<", "1.0a12.dev456"},
        {"1.0a12.dev456", "<", "1.0a12"},
        {"1.0a12", "<", "1.0b1.dev456"},
        {"1.0b1.dev456", "<", "1.0b2"},
        {"1.0b2", "<", "1.0b2.post345.dev456"},
        {"1.0b2.post345.dev456", "<", "1.0b2.post345"},
        {"1.0b2.post345", "<", "1.0rc1.dev456"},
        {"1.0rc1.dev456", "<", "1.0rc1"},
        {"1.0rc1", "<", "1.0"},
        {"1.0", "<", "1.0+abc.5"},
        {"1.0+abc.5", "<", "1.0+abc.7"},
        {"1.0+abc.7", "<", "1.0+5"},
        {"1.0+5", "<", "1.0.post456.dev34"},
        {"1.0.post456.dev34", "<", "1.0.post456"},
        {"1.0.post456", "<", "1.1.dev1"},
        {"1!0.1", ">", "2024.1"},
        {"1.0+a", "<", "1.0+a.1"},
    };
    expectOrders(Scheme::kPep440, rows);
}

TEST(Pep440Versions, SpellingsOfOneVersion) {
    const VersionCase rows[] = {
        {"1.0", "=", "1.0.0"},
        {"v1.0", "=", "1.0"},
        {" 1.0\n", "=", "1.0"},
        {"1.0RC1", "=", "1.0rc1"},
        {"1.0-rc.1", "=", "1.0c1"},
        {"1.0.alpha", "=", "1.0a0"},
        {"1.0preview2", "=", "1.0rc2"},
        {"1.0pre2", "=", "1.0rc2"},
        {"1.0_beta-3", "=", "1.0b3"},
        {"1.0-1", "=", "1.0.post1"},
        {"1.0-rev3", "=", "1.0.post3"},
        {"1.0r3", "=", "1.0.post3"},
        {"1.0-dev", "=", "1.0.dev0"},
        {"01.002", "=", "1.2"},
        {"0!1", "=", "1"},
        {"1.0+Ubuntu-1", "=", "1.0+ubuntu.1"},
    };
    expectOrders(Scheme::kPep440, rows);
}

TEST(Pep440Versions, WhatIsNoPythonVersion) {
    const VersionCase rows[] = {
        {"", "refused", "1"},         {"foo", "refused", "1"},
        {"1.", "refused", "1"},       {"1..2", "refused", "1"},
        {"1.0x", "refused", "1"},     {"1.0+", "refused", "1"},
        {"1.0+a..b", "refused", "1"}, {"!1", "refused", "1"},
        {"1!", "refused", "1"},       {"1.2!3", "refused", "1"},
        {"1.0a1b1", "refused", "1"},  {"1 0", "refused", "1"},
        {"1.0-1-1", "refused", "1"},  {"1.0.dev1.dev2", "refused", "1"},
        {"1.0+a_", "refused", "1"},
    };
    expectOrders(Scheme::kPep440, rows);
}

}  // namespace
}  // namespace zuksw
