#include "scanners/zuksw/language/pattern.h"

#include <gtest/gtest.h>

namespace zuksw {
namespace {

constexpr std::int64_t kMemory = 64 << 20;

const char* const kPlain[] = {
    "abc",    "a.c",         "\\d+\\.\\d+",  "(?P<v>\\d+)", "[a-z]*",     "[^\\x00]*?x", "a{2}",
    "a{2,}b", "a{1,3}?",     "(?:a|b)+",     "^x$",         "\\x00\\x7f", "[\\d.]+",     "a|b|",
    "\\.so",  "(a)(?P<n>b)", "[a-z0-9_.-]+", "x\\b",        "-\\-",
};
const char* const kNotPlain[] = {
    "(?i)a",   "a**",         "*a",        "(",    ")",  "[z-a]", "a{1001}",   "(?P<v>a)(?P<v>b)",
    "\\Qa\\E", "[[:alpha:]]", "(a{9}){9}", "\\pL", "\\", "[a",    "(?P<1a>b)", "a{3,1}",
    "\\1"};

TEST(PatternSyntax, KnowsPlainPatterns) {
    for (const char* text : kPlain) EXPECT_TRUE(plainPatternGroups(text)) << text;
    for (const char* text : kNotPlain) EXPECT_FALSE(plainPatternGroups(text)) << text;
}

// What is taken for plain is never compiled before it is run, so the engine must agree.
TEST(PatternSyntax, PlainPatternsAreValidWithTheSameGroups) {
    for (const char* text : kPlain) {
        const re2::RE2 engine(text, re2::RE2::Latin1);
        ASSERT_TRUE(engine.ok()) << text;
        const auto groups = plainPatternGroups(text);
        ASSERT_EQ(engine.CapturingGroupNames().size(), groups->size()) << text;
        for (const PatternGroup& group : *groups) {
            EXPECT_EQ(group.name, engine.CapturingGroupNames().at(group.index)) << text;
        }
    }
}

TEST(PatternStore, HandsOutOnePatternForEachText) {
    PatternStore store(kMemory);
    std::string error;
    EXPECT_EQ(store.get("a+", &error), store.get("a+", &error));
}

TEST(PatternStore, RefusesWhatIsNoPatternOrTooLarge) {
    PatternStore store(1 << 20);
    for (const char* text : {"(", "a**", "a{1001}", "((a{100}){100}){100}"}) {
        std::string error;
        EXPECT_EQ(nullptr, store.get(text, &error)) << text;
        EXPECT_NE("", error) << text;
    }
}

TEST(PatternStore, SlowLookingPatternsAreFine) {
    PatternStore store(kMemory);
    for (const char* text : {"(a*)*b", "(.{1,500}){3}x"}) {
        std::string error;
        const auto pattern = store.get(text, &error);
        if (!pattern) continue;  // refused is fine too; hanging is not
        EXPECT_FALSE(re2::RE2::PartialMatch(std::string(10'000, 'a'), *pattern->engine())) << text;
    }
}

TEST(QuotePattern, MakesTextMatchItself) {
    const std::string text("a.b*\0[\\", 7);
    const re2::RE2 engine(quotePattern(text), re2::RE2::Latin1);
    EXPECT_TRUE(re2::RE2::FullMatch(text, engine));
}

TEST(HasLiteralRun, NeedsThreePlainBytes) {
    EXPECT_TRUE(hasLiteralRun("OpenSSL \\d"));
    EXPECT_TRUE(hasLiteralRun("\\x00\\.so"));
    EXPECT_FALSE(hasLiteralRun("\\d+\\.\\d+"));
    EXPECT_FALSE(hasLiteralRun("ab*c"));
    EXPECT_FALSE(hasLiteralRun("[abc]+"));
}

TEST(LargestRepetition, CountsUpperBounds) {
    EXPECT_EQ(0U, largestRepetition("a+"));
    EXPECT_EQ(500U, largestRepetition(".{1,500}x{3}"));
    EXPECT_EQ(0U, largestRepetition("\\{200\\}"));
}

}  // namespace
}  // namespace zuksw
