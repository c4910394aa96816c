#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/api/installation.h"

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

// Writes each block of a page that has a file name, "```c memory.c", to that file.
constexpr char kExtract[] =
    R"(awk '/^```/ { file = file == "" && NF == 2 ? $2 : ""; next } file != "" { print > file }' )" ZUK_SOURCE_DIR
    "/";

// Takes a page's files and runs one of its scripts as it stands there.
ShellResult follow(const std::string& page, const std::string& script) {
    const Installation zuk;
    return zuk.run(kExtract + page + " && sh -eu " + script);
}

// The same for one that must succeed: what it prints.
std::string outputOf(const std::string& page, const std::string& script) {
    const ShellResult result = follow(page, script);
    EXPECT_EQ(0, result.status) << result.err;
    return result.out;
}

}  // namespace

TEST(Documentation, TheReadmesProgramReadsTheMemory) {
    EXPECT_THAT(outputOf("README.md", "build-memory.sh"),
                ContainsRegex("^This machine has [0-9]+ bytes of memory.\n$"));
}

TEST(Documentation, TheCommandsOfTheQuickStartWork) {
    EXPECT_THAT(outputOf("docs/quickstart.md", "shell.sh"), HasSubstr("\"OperatingSystem\": ["));
}

TEST(Documentation, TheInventoryOfTheQuickStartHasFields) {
    EXPECT_THAT(outputOf("docs/quickstart.md", "build-inventory.sh"),
                ContainsRegex("\nMemory 0\n  [A-Za-z]+ = "));
}

TEST(Documentation, TheSignatureOfTheQuickStartFindsTheShell) {
    const ShellResult result = follow("docs/quickstart.md", "bash.sh");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_THAT(result.out, ContainsRegex("\n  GNU Bash  [0-9.]+ +/usr/bin/bash  "));
    EXPECT_THAT(result.out, HasSubstr("\"warnings\": []"));
}

TEST(Documentation, TheSoftwareProgramOfTheQuickStartFindsTheShell) {
    EXPECT_THAT(outputOf("docs/quickstart.md", "build-software.sh"),
                ContainsRegex("^bash [0-9.]+ at /usr/bin/bash\n$"));
}

TEST(Documentation, TheMessagesOfTheQuickStartTellTheFailure) {
    const ShellResult result = follow("docs/quickstart.md", "build-messages.sh");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("ZUK_hw_run: 103\n", result.out);
    EXPECT_NE("", result.err);
}

TEST(Documentation, TheCxxProgramOfTheQuickStartPrintsATree) {
    EXPECT_THAT(outputOf("docs/quickstart.md", "build-tree.sh"), EndsWith("<disk size=\"512\"/>\n"));
}

TEST(Documentation, TheStatusCodesAreThoseOfTheHeader) {
    // A 1 in the header's lists of codes belongs to the words "value above 1".
    const ShellResult difference =
        shell("cd " ZUK_SOURCE_DIR
              " && T=$(mktemp -d) && trap 'rm -r $T' EXIT &&"
              R"(awk '/@return/ { on = 1 } /\*\// { on = 0 } on' include/zuk.h |)"
              R"(grep -oE '[0-9]+' | grep -vx 1 | sort -u >$T/header;)"
              R"(sed -n '/^## /q; s/^| \([0-9]*\) |.*/\1/p' docs/errors.md | sort -u >$T/page;)"
              "test -s $T/page && diff $T/header $T/page");
    EXPECT_EQ("", difference.out);
    EXPECT_EQ(0, difference.status) << difference.err;
}
