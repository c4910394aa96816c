#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(GenericVersions, NumbersCompareByValueWhateverTheirLength) {
    const VersionCase rows[] = {
        {"1.0", "=", "1.0.0"},
        {"1.0", "<", "1.0.1"},
        {"1.9", "<", "1.10"},
        {"01.002", "=", "1.2"},
        {"2", ">", "1.99"},
        {"1.99999999999999999999999999999998", "<", "1.99999999999999999999999999999999"},
        {"0", "=", "0.0.0"},
        {"", "=", "0"},
        {"1-2_3", "=", "1.2.3"},
        {"1..2", "=", "1.2"},
    };
    expectOrders(Scheme::kGeneric, rows);
}

TEST(GenericVersions, WordsThatAnnounceAReleaseStandBeforeIt) {
    const VersionCase rows[] = {
        {"1.0rc1", "<", "1.0"},         {"1.0-rc1", "=", "1.0rc1"},
        {"1.0.0rc1", "=", "1.0rc1"},    {"1.0dev", "<", "1.0"},
        {"1.0-alpha", "<", "1.0-beta"}, {"1.0-beta", "<", "1.0-rc"},
        {"1.0pre", "<", "1.0"},         {"1.0-preview2", "<", "1.0"},
        {"1.0cr1", "<", "1.0"},         {"1.0-SNAPSHOT", "<", "1.0"},
        {"1.0rc", "=", "1.0rc0"},       {"1.0rc1", "<", "1.0rc2"},
        {"1.0rc9", "<", "1.0rc10"},     {"1.0rc1", ">", "0.9"},
        {"2.0b1", "<", "2.0"},  // a single a, b or c directly before a digit
        {"2.0a1", "<", "2.0b1"},        {"2.0c1", "<", "2.0"},
    };
    expectOrders(Scheme::kGeneric, rows);
}

TEST(GenericVersions, OtherLettersStandAfterItAndBeforeAFurtherNumber) {
    const VersionCase rows[] = {
        {"1.1.1k", ">", "1.1.1"},   {"1.1.1k", "<", "1.1.1l"}, {"1.1.1k", "<", "1.1.2"},
        {"1.1.1k", "<", "1.1.1.1"}, {"9.2p1", ">", "9.2"},     {"9.2p1", "<", "9.2p2"},
        {"1.0.2b", ">", "1.0.2"},  // no digit follows: a letter like any other
        {"1.0k", "=", "1.0.0k"},    {"1k", "<", "1.0.1"},
    };
    expectOrders(Scheme::kGeneric, rows);
}

TEST(GenericVersions, LettersCompareWithoutCase) {
    const VersionCase rows[] = {
        {"1.0RC1", "=", "1.0rc1"},
        {"1.0K", "=", "1.0k"},
        {"1.0k", "<", "1.0L"},
    };
    expectOrders(Scheme::kGeneric, rows);
}

TEST(GenericVersions, TextFromThePlusOnIsDropped) {
    const VersionCase rows[] = {
        {"1.0+dfsg1", "=", "1.0"},
        {"1.0+git2024", "<", "1.1"},
        {"1.0rc1+b", "=", "1.0rc1"},
    };
    expectOrders(Scheme::kGeneric, rows);
}

}  // namespace
}  // namespace zuksw
