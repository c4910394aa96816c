#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(PacmanVersions, EpochVersionRelease) {
    const VersionCase rows[] = {
        {"1.5.0", "=", "1.5.0"},     {"1.5.1", ">", "1.5.0"},   {"1.5.1", ">", "1.5"},
        {"1.5.0-1", "<", "1.5.0-2"}, {"1.5-1", "<", "1.5.1-1"}, {"1.5-2", "<", "1.5.1-1"},
        {"1.5", "=", "1.5-1"},  // no release: not compared
        {"1.1-1", ">", "1.0"},       {"0:1.0", "=", "1.0"},     {"1:1.0", ">", "1.1"},
        {"1:1.0-1", ">", "0:1.1-2"},
    };
    expectOrders(Scheme::kPacman, rows);
}

TEST(PacmanVersions, Parts) {
    const VersionCase rows[] = {
        {"1.5.b", ">", "1.5"},     {"1.5b", "<", "1.5"},      {"1.5b", "<", "1.5.1"},
        {"1.0a", "<", "1.0alpha"}, {"1.0alpha", "<", "1.0b"}, {"1.0b", "<", "1.0beta"},
        {"1.0beta", "<", "1.0rc"}, {"1.0rc", "<", "1.0"},     {"1.5.a", "<", "1.5.1"},
        {"1.5.a", ">", "1.4"},     {"2.0", "=", "2_0"},       {"2.0_a", "=", "2_0.a"},
        {"2.0a", "<", "2.0.a"},    {"2___a", ">", "2_a"},     {"10.0001", "=", "10.1"},
        {"1.", ">", "1"},
    };
    expectOrders(Scheme::kPacman, rows);
}

TEST(PacmanVersions, EmptyIsRefused) {
    const VersionCase rows[] = {
        {"", "refused", "1"},
    };
    expectOrders(Scheme::kPacman, rows);
}

}  // namespace
}  // namespace zuksw
