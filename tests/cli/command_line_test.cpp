#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/zuk_program.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Usage {
    const char* arguments;
    const char* told;  // on standard error
};

const Usage kWrong[] = {
    {"", "zuk --help"},
    {"hardware", "there is no command 'hardware'"},
    {"hw --jsn", "unknown option '--jsn'"},
    {"hw -x", "unknown option '-x'"},
    {"hw --home", "--home DIR"},
    {"hw --home=", "--home DIR"},
    {"hw Procesor", "Processor"},
    {"hw drive", "LogicalDrive"},
    {"hw zzzzzz", "zuk groups"},
    {"hw 17", "there is no group '17'"},  // a number that names no group
    {"hw 52", "there is no group '52'"},
    {"hw -- --json", "there is no group '--json'"},
    {"hw ''", "there is no group ''"},
    {"groups Memory", "zuk hw GROUP"},
};

}  // namespace

TEST(CommandLine, WrongUsageIsToldWithTheRemedyAndStatus2) {
    for (const Usage& usage : kWrong) {
        const ShellResult result = ZukProgram().run(usage.arguments);
        EXPECT_EQ(2, result.status) << usage.arguments;
        EXPECT_EQ("", result.out) << usage.arguments;
        EXPECT_THAT(result.err, HasSubstr(usage.told)) << usage.arguments;
    }
}

TEST(CommandLine, WrongUsageLeavesNothingBehind) {
    const ZukProgram zuk;
    zuk.run("hw Procesor");
    EXPECT_TRUE(zuk.leftNothingBehind());
}

TEST(CommandLine, HelpNamesEveryCommand) {
    const ShellResult result = ZukProgram().run("--help");
    EXPECT_EQ(0, result.status);
    EXPECT_THAT(result.out, HasSubstr("\n  hw "));
    EXPECT_THAT(result.out, HasSubstr("\n  groups "));
}

TEST(CommandLine, EachCommandHasAHelpOfItsOwn) {
    EXPECT_THAT(ZukProgram().run("hw --help").out, StartsWith("usage: zuk hw "));
    EXPECT_THAT(ZukProgram().run("groups -h").out, StartsWith("usage: zuk groups "));
}

TEST(CommandLine, HelpNeedsNoScanner) {
    EXPECT_EQ(0, ZukProgram().run("hw --help --home /nonexistent").status);
}

TEST(CommandLine, VersionIsOneLine) {
    EXPECT_EQ("zuk " ZUK_VERSION "\n", ZukProgram().run("--version").out);
}

TEST(CommandLine, AWordFromTheCommandLineReachesTheTerminalWithoutItsControlCharacters) {
    EXPECT_THAT(ZukProgram().run("\"$(printf '\\033[2J')\"").err, HasSubstr("'\uFFFD[2J'"));
}
