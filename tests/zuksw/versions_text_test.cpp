#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

TEST(TextVersions, Bytes) {
    const VersionCase rows[] = {
        {"a", "<", "b"}, {"B", "<", "a"},  {"10", "<", "9"},
        {"", "<", "a"},  {"a", "<", "ab"}, {"z", "<", "\xC3\xA9"},
    };
    expectOrders(Scheme::kText, rows);
}

TEST(TextVersions, WithoutCaseOnlyAsciiLettersAreFolded) {
    const VersionCase rows[] = {
        {"ABC", "=", "abc"},
        {"aB", "<", "AC"},
        {"a", "<", "AB"},
        {"_", "<", "A"},  // letters count as small ones
        {"\xC3\x89", "<", "\xC3\xA9"},
    };
    expectOrders(Scheme::kTextNoCase, rows);
}

}  // namespace
}  // namespace zuksw
