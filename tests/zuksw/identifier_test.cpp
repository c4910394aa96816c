#include "scanners/zuksw/language/identifier.h"

#include <gtest/gtest.h>

#include <string>

namespace zuksw {
namespace {

struct IdentifierCase {
    std::string text;
    bool ok;
};

TEST(Identifier, LettersDigitsAndUnderscoreUpTo64) {
    const IdentifierCase cases[] = {
        {"version", true},
        {"_v2", true},
        {"", false},
        {"2v", false},
        {"a-b", false},
        {"a.b", false},
        {"\xC3\xA9", false},
        {std::string(64, 'a'), true},
        {std::string(65, 'a'), false},
    };
    for (const IdentifierCase& c : cases) EXPECT_EQ(c.ok, isIdentifier(c.text)) << c.text;
}

}  // namespace
}  // namespace zuksw
