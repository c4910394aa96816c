#include "scanners/zukhw/os_release.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* line;
    const char* value;
};

TEST(OsRelease, TakesShellQuotingOff) {
    const Case cases[] = {
        {"X=plain", "plain"},
        {"X=\"double quoted\"", "double quoted"},
        {"X='single \"quoted\"'", "single \"quoted\""},
        {"X=\"a \\\"b\\\" \\$c \\`d \\\\ \\n\"", "a \"b\" $c `d \\ \\n"},
        {"X='a\\b'", "a\\b"},
        {"X=\"un\"'ited'", "united"},
        {"X=a\\ b", "a b"},
        {"X=a # no comment for us", "a"},
        {"X=", ""},
        {"X=\"never closed", "never closed"},
        {"X=ends\\", "ends\\"},
        {"  X=indented  ", "indented"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.value, parseOsRelease(c.line)["X"]) << c.line;
    }
}

TEST(OsRelease, SkipsWhatIsNoAssignment) {
    const auto values = parseOsRelease("# X=comment\nno assignment\n=nothing\na b=c\n-=d\nGOOD=1\n");
    EXPECT_EQ((std::map<std::string, std::string>{{"GOOD", "1"}}), values);
}

TEST(OsRelease, TakesTheLastOfRepeatedNames) {
    EXPECT_EQ("2", parseOsRelease("X=1\r\nX=2\r\n")["X"]);
}

}  // namespace
