#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/zuk_program.h"

using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char kMachine[] =
    "<Processor><Index>0</Index><Model>Fast</Model></Processor>"
    "<Processor><Index>1</Index><Model>Fast</Model></Processor>"
    "<Memory><TotalBytes>1024</TotalBytes></Memory>";

}  // namespace

TEST(Hw, ListsWhatTheScannerFound) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(kMachine);
    const ShellResult result = zuk.runHw("Processor Memory");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(
        "Processor (2)\n"
        "  Index\n"
        "      0\n"
        "      1\n"
        "  all of them:\n"
        "    Model  Fast\n"
        "\n"
        "Memory\n"
        "  TotalBytes  1024\n",
        result.out);
    EXPECT_EQ("", result.err);
}

TEST(Hw, LeavesNothingBehind) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(kMachine);
    zuk.runHw();
    EXPECT_TRUE(zuk.leftNothingBehind());
}

TEST(Hw, WithoutGroupsAllAreScanned) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds("");
    const ShellResult result = zuk.runHw();
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_THAT(result.out, HasSubstr("Nothing found\n  ComponentID, Processor, Memory, "));
    EXPECT_THAT(result.out, HasSubstr("IPv6Address"));
}

TEST(Hw, GroupsComeInTheOrderAskedForEachOnce) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(kMachine);
    EXPECT_EQ("{\n  \"Memory\": [\n    {\n      \"TotalBytes\": 1024\n    }\n  ],\n  \"Video\": []\n}\n",
              zuk.runHw("--json MEMORY 13 memory 3").out);
}

TEST(Hw, HomeIsTakenFromTheOptionInEitherForm) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(kMachine);
    EXPECT_EQ(0, zuk.run("hw --home=" + zuk.path("home")).status);
    EXPECT_EQ(0, zuk.run("hw memory --home " + zuk.path("home")).status);
}

TEST(Hw, APathBeyondAsciiIsAHomeLikeAnyOther) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(kMachine);
    std::filesystem::rename(zuk.path("home"), zuk.path("größe"));
    EXPECT_EQ(0, zuk.run("hw --home " + zuk.path("größe")).status);
}

TEST(Hw, APathWithBlanksIsAHomeLikeAnyOther) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(kMachine);
    std::filesystem::rename(zuk.path("home"), zuk.path("my home"));
    EXPECT_EQ(0, zuk.run("hw --home '" + zuk.path("my home") + "'").status);
}

TEST(Hw, TextBeyondAsciiIsUtf8InAnyLocale) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds("<Memory><Note>größe 漢字 \U0001F600</Note></Memory>");
    EXPECT_THAT(shell("LC_ALL=C " + zuk.command() + "hw memory --home " + zuk.path("home")).out,
                HasSubstr("Note  größe 漢字 \U0001F600\n"));
}

TEST(Hw, ControlCharactersOfValuesDoNotReachTheTerminal) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds("<Memory><Note>a&#x9b;2J&#x7f;&#x202e;b&#xa;c</Note></Memory>");
    EXPECT_THAT(zuk.runHw("memory").out, HasSubstr("Note  a\uFFFD2J\uFFFD\uFFFDb\uFFFDc\n"));
}

TEST(Hw, OfEqualFieldNamesTheFirstIsShown) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds("<Memory><Note>first</Note><Note>second</Note></Memory>");
    EXPECT_EQ("Memory\n  Note  first\n", zuk.runHw("memory").out);
}

TEST(Hw, VerboseShowsTheLibrarysMessagesOnStandardError) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(kMachine);
    const ShellResult result = zuk.runHw("-v memory");
    EXPECT_EQ("Memory\n  TotalBytes  1024\n", result.out);
    EXPECT_THAT(result.err, HasSubstr("zuk: ZUK_init: init OK"));
}

TEST(Hw, WhatTheScannerSaysIsShownWithoutItsControlCharacters) {
    const ZukProgram zuk;
    zuk.installScanner("printf 'so\\033[2J \\303\\266 \\377\\n'; printf '<Inventory/>' > \"$4\"");
    const std::string said = zuk.runHw("--verbose memory").err;
    EXPECT_THAT(said, HasSubstr("so\uFFFD[2J ö \uFFFD"));
    EXPECT_THAT(said, Not(HasSubstr("\033")));
}
