#include "scanners/zuksw/language/path_glob.h"

#include <gtest/gtest.h>

namespace zuksw {
namespace {

struct PathCase {
    const char* glob;
    const char* path;
    bool matches;
};

TEST(PathGlob, MatchesWholePaths) {
    const PathCase cases[] = {
        {"/a/b", "a/b", true},
        {"/a/*", "a/b", true},
        {"/a/*", "a/b/c", false},
        {"/a/**", "a/b/c", true},
        {"/a/**", "a", false},
        {"**/x", "x", true},
        {"**/x", "a/b/x", true},
        {"**/x", "a/xx", false},
        {"/a/**/c", "a/c", true},
        {"/a/**/c", "a/b/b/c", true},
        {"/a/**/b/**/c", "a/x/b/c", true},
        {"/{a,b/c}/d", "b/c/d", true},
        {"**/m/n/*.js", "q/m/m/n/a.js", true},
        {"/a?b", "a/b", false},
        {"//a//b", "a/b", true},
    };
    for (const PathCase& c : cases) {
        std::string error;
        const auto glob = Glob::parsePath(c.glob, &error);
        ASSERT_TRUE(glob) << c.glob << ": " << error;
        EXPECT_EQ(c.matches, glob->matches(c.path)) << c.glob << " on " << c.path;
    }
}

TEST(PathGlob, KnowsWhatItCanReach) {
    const PathCase cases[] = {
        {"/a/b/c", "a", true}, {"/a/b/c", "a/b", true},  {"/a/b/c", "a/b/c", false}, {"/a/b/c", "x", false},
        {"**/x", "q/r", true}, {"/a/**/x", "a/q", true}, {"/a/**/x", "b", false},    {"/*/x", "b", true},
    };
    for (const PathCase& c : cases) {
        std::string error;
        EXPECT_EQ(c.matches, Glob::parsePath(c.glob, &error)->reachesBelow(c.path))
            << c.glob << " below " << c.path;
    }
}

TEST(PathGlob, KnowsItsLiteralDirectory) {
    std::string error;
    EXPECT_EQ("usr/lib", literalDirectory(Glob::parsePath("/usr/lib/*/x", &error)->alternatives()[0]));
    EXPECT_EQ("usr", literalDirectory(Glob::parsePath("/usr/x", &error)->alternatives()[0]));
    EXPECT_EQ("", literalDirectory(Glob::parsePath("**/x", &error)->alternatives()[0]));
}

TEST(NameOnlyGlob, HoldsNoSlash) {
    std::string error;
    EXPECT_FALSE(Glob::parseName("a/b", &error));
    EXPECT_TRUE(Glob::parseName("{a,b}*", &error)->matches("bx"));
}

}  // namespace
}  // namespace zuksw
