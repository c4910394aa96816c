#include "scanners/zuksw/language/name_glob.h"

#include <gtest/gtest.h>
#include <re2/re2.h>

namespace zuksw {
namespace {

struct GlobCase {
    const char* glob;
    const char* name;
    bool matches;
};

const GlobCase kCases[] = {
    {"abc", "abc", true},
    {"abc", "abcd", false},
    {"*", "", true},
    {"*", "a/b", false},
    {"a*c", "abbc", true},
    {"a*c", "abbcd", false},
    {"*.so.*", "libc.so.6", true},
    {"*a*b*c", "xaxbxcxc", true},
    {"a?c", "abc", true},
    {"a?c", "a/c", false},
    {"a?c", "ac", false},
    {"[a-c]x", "bx", true},
    {"[!a-c]x", "bx", false},
    {"[^a-c]x", "dx", true},
    {"[]x]y", "]y", true},
    {"[a-]", "-", true},
    {"[!x]", "/", false},
    {"\\*", "*", true},
    {"\\*", "x", false},
    {"[\\]]", "]", true},
    {"**", "ab", true},
    {"python[0-9]*", "python3", true},
    {"\xE9*", "\xE9t", true},
};

TEST(NameGlob, MatchesBytes) {
    for (const GlobCase& c : kCases) {
        std::string error;
        const auto glob = NameGlob::parse(c.glob, &error);
        ASSERT_TRUE(glob) << c.glob << ": " << error;
        EXPECT_EQ(c.matches, glob->matches(c.name)) << c.glob << " on " << c.name;
    }
}

TEST(NameGlob, IsTheSameAsItsPattern) {
    for (const GlobCase& c : kCases) {
        std::string error;
        const auto glob = NameGlob::parse(c.glob, &error);
        re2::RE2::Options options(re2::RE2::Latin1);
        const re2::RE2 pattern(glob->asPattern(), options);
        EXPECT_EQ(c.matches, re2::RE2::FullMatch(c.name, pattern)) << c.glob << " on " << c.name;
    }
}

TEST(NameGlob, RefusesWhatIsNoGlob) {
    for (const char* text : {"[a", "[]", "[z-a]", "a\\"}) {
        std::string error;
        EXPECT_FALSE(NameGlob::parse(text, &error)) << text;
        EXPECT_NE("", error) << text;
    }
}

TEST(NameGlob, KnowsItsFixedEnds) {
    std::string error;
    const auto glob = NameGlob::parse("lib*.so", &error);
    EXPECT_EQ("lib", glob->prefix());
    EXPECT_EQ(".so", glob->suffix());
    EXPECT_FALSE(glob->isLiteral());
    EXPECT_TRUE(NameGlob::parse("a\\*b", &error)->isLiteral());
}

TEST(NameGlob, TakesTimeLinearInTheNameForManyStars) {
    std::string error;
    std::string text;
    for (int i = 0; i < 1000; ++i) text += "a*";
    const auto glob = NameGlob::parse(text + "b", &error);
    EXPECT_FALSE(glob->matches(std::string(20'000, 'a')));
}

struct BraceCase {
    const char* text;
    std::vector<std::string> texts;
};

TEST(ExpandBraces, GivesEachAlternative) {
    const BraceCase cases[] = {
        {"a", {"a"}},
        {"{a,b}", {"a", "b"}},
        {"x{a,b{c,d}}y", {"xay", "xbcy", "xbdy"}},
        {"{,a}b", {"b", "ab"}},
        {"\\{a}", {"\\{a}"}},
        {"[{]", {"[{]"}},
        {"{a/b,c}", {"a/b", "c"}},
    };
    for (const BraceCase& c : cases) {
        std::string error;
        const auto texts = expandBraces(c.text, &error);
        ASSERT_TRUE(texts) << c.text << ": " << error;
        EXPECT_EQ(c.texts, *texts) << c.text;
    }
}

TEST(ExpandBraces, RefusesBracesThatTakeVeryLongToResolve) {
    std::string error;
    const std::string deep = std::string(30'000, '{') + "a" + std::string(30'000, '}');
    EXPECT_FALSE(expandBraces(deep, &error).has_value());
    std::string row = std::string(50'000, 'x');
    for (int i = 0; i < 1000; ++i) row += "{y}";
    EXPECT_FALSE(expandBraces(row, &error).has_value());
    EXPECT_TRUE(expandBraces("{{{{a}}}}{b}{c}", &error).has_value());
}

TEST(ExpandBraces, RefusesOpenAndVeryManyBraces) {
    std::string error;
    EXPECT_FALSE(expandBraces("{a,b", &error));
    EXPECT_FALSE(expandBraces("{a,b}{a,b}{a,b}{a,b}{a,b}{a,b}{a,b}{a,b}{a,b}{a,b}{a,b}", &error));
}

TEST(QuoteGlob, MakesTextMatchItself) {
    const std::string text = "*?[]{},\\a";
    std::string error;
    EXPECT_TRUE(NameGlob::parse(quoteGlob(text), &error)->matches(text));
}

}  // namespace
}  // namespace zuksw
