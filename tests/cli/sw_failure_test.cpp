#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/zuk_program.h"

using testing::AllOf;
using testing::HasSubstr;

namespace {

class SwFailure : public testing::Test {
  protected:
    std::string file(const std::string& content = "<Signatures><Signature guid='g' name='n'/></Signatures>",
                     const std::string& name = "mine.xml") const {
        return zuk_.folder().file(name, content);
    }
    bool scannerRan() const { return std::filesystem::exists(zuk_.path("ran")); }

    ZukProgram zuk_;
};

struct WrongUsage {
    std::string arguments;
    std::string told;
};

struct BadScanner {
    const char* body;
    const char* told;
    const char* status;
};

const BadScanner kBadScanners[] = {
    {"exit 1", "ended with exit status 1: -v", "status 203"},
    {"kill -9 $$", "was ended by signal 9: -v", "status 203"},
    {"echo 'zuksw: error: system/Prefix: no directory'; exit 4", "a setting: system/Prefix: no directory",
     "status 203"},
    {"exit 0", "could not be read", "status 204"},
    {"printf '<Results><' > \"$4\"; printf '<Warnings/>' > \"$6\"", "could not be read", "status 204"},
    {"printf '<Results/>' > \"$4\"; printf '<Warnings' > \"$6\"", "could not be read", "status 205"},
};

struct BadFile {
    const char* content;
    const char* told;
};

const BadFile kBadFiles[] = {
    {"<Signatures><Signature></Signatures>", "bad.xml: line 1, column 26: mismatched tag"},
    {"", "bad.xml: line 1, column 1: no element found"},
    {"\n <Signature guid='g'/>", "bad.xml: line 2, column 2: the root element is <Signature>"},
    {"<!DOCTYPE Signatures>\n<Signatures/>", "bad.xml: line 1, column 21: a DOCTYPE is not allowed"},
    {"<!DOCTYPE a [<!ENTITY b 'x'>]><Signatures>&b;</Signatures>", "a DOCTYPE is not allowed"},
    {"<Signatures/>\n<Signatures/>", "bad.xml: line 2, column 1: junk after document element"},
    {"<Signatures>\xE9</Signatures>", "bad.xml: line 1, column 13: not well-formed"},
};

}  // namespace

TEST_F(SwFailure, WrongUsageIsToldBeforeAnyRunWithStatus2) {
    zuk_.installSoftwareScannerThatFinds("", "", "touch " + zuk_.path("ran"));
    std::filesystem::create_directory(zuk_.path("empty"));
    shell("mkfifo " + zuk_.path("fifo"));
    const WrongUsage kCases[] = {
        {zuk_.path("none.xml"), "none.xml: there is no such signature file"},
        {zuk_.path("empty"), "is a directory: \"--catalogue DIR\""},
        {zuk_.path("fifo"), "is not a regular file"},
        {quoted(file("<Signatures/>", "a\"b.xml")), "quotation mark"},
        {"--catalogue " + zuk_.path("none"), "none: the catalogue cannot be listed: No such file"},
        {"--catalogue " + zuk_.path("empty"), "empty: there is no signature file *.xml in it"},
        {"--catalogue " + zuk_.path("empty") + " " + file(), "give the one or the other"},
        {file() + " --set", "--set NAME=VALUE[@GUID]"},
        {file() + " --set name", "NAME=VALUE"},
        {file() + " --set =value", "NAME=VALUE"},
        {file() + " --set mail=me@there", "no signature has the GUID 'there'"},
        {file() + " --set a=1 --set a=2@g", "--set a is there twice"},
        {file() + " --set \"a=$(printf '\\001')\"", "control character"},
        {file() + " --plugin", "--plugin PLUGIN.ATTRIBUTE=VALUE"},
        {file() + " --plugin search=x", "PLUGIN.ATTRIBUTE=VALUE"},
        {file() + " --plugin search.=x", "PLUGIN.ATTRIBUTE=VALUE"},
        {file() + " --plugin .Root=x", "PLUGIN.ATTRIBUTE=VALUE"},
        {file() + " --plugin search.Root", "PLUGIN.ATTRIBUTE=VALUE"},
    };
    for (const WrongUsage& c : kCases) {
        const ShellResult result = zuk_.runSw(c.arguments);
        EXPECT_EQ(2, result.status) << c.arguments;
        EXPECT_THAT(result.err, HasSubstr(c.told)) << c.arguments;
        EXPECT_EQ("", result.out) << c.arguments;
        EXPECT_FALSE(scannerRan()) << c.arguments;
    }
}

TEST_F(SwFailure, OtherSubcommandsDoNotTakeItsOptions) {
    const ShellResult result = zuk_.runHw("--set a=b");
    EXPECT_EQ(2, result.status);
    EXPECT_THAT(result.err, HasSubstr("unknown option '--set'"));
}

TEST_F(SwFailure, ABadScannerIsToldWithStatus1) {
    for (const BadScanner& bad : kBadScanners) {
        zuk_.installSoftwareScanner(bad.body);
        const ShellResult result = zuk_.runSw(file());
        EXPECT_EQ(1, result.status) << bad.body;
        EXPECT_EQ("", result.out) << bad.body;
        EXPECT_THAT(result.err, AllOf(HasSubstr(bad.told), HasSubstr(bad.status))) << bad.body;
        EXPECT_TRUE(zuk_.leftNothingBehind()) << bad.body;
    }
}

TEST_F(SwFailure, AMissingScannerIsToldWithItsPlaceAndTheOption) {
    const ShellResult result = zuk_.runSw(file());
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err, AllOf(HasSubstr(zuk_.path("home")), HasSubstr("holds zuksw with --home DIR"),
                                  HasSubstr("status 203")));
}

TEST_F(SwFailure, ARejectedFileIsNamedWithTheReasonAndTheRemedy) {
    zuk_.installSoftwareScanner("echo \"zuksw: error: $8: line 2, column 1: why\"; exit 3");
    const std::string path = file();
    const ShellResult result = zuk_.runSw(path);
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("zuk: the scanner rejects " + path + ": line 2, column 1: why; \"" + zuk_.path("home") +
                  "/zuksw --check -i " + path + "\" explains every mistake (status 202)\n",
              result.err);
}

TEST_F(SwFailure, RejectedFilesAreNamedTogether) {
    zuk_.installSoftwareScanner("echo \"zuksw: error: $8: too many signatures\"; exit 3");
    const ShellResult result = zuk_.runSw(file() + " " + file("<Signatures/>", "b.xml"));
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("zuk: the scanner rejects the 2 signature files together: too many signatures; \"" +
                  zuk_.path("home") + "/zuksw --check -i FILE\" explains every mistake (status 202)\n",
              result.err);
}

TEST_F(SwFailure, FilesThatCannotBeJoinedAreNamedWithThePlace) {
    zuk_.installSoftwareScannerThatFinds("", "", "touch " + zuk_.path("ran"));
    for (const BadFile& bad : kBadFiles) {
        const ShellResult result = zuk_.runSw(file() + " " + file(bad.content, "bad.xml"));
        EXPECT_EQ(1, result.status) << bad.content;
        EXPECT_THAT(result.err, AllOf(HasSubstr(bad.told), HasSubstr("zuksw --check -i "))) << bad.content;
        EXPECT_FALSE(scannerRan()) << bad.content;
    }
}

TEST_F(SwFailure, OneThatStandsAloneIsLeftToTheScanner) {
    zuk_.installSoftwareScannerThatFinds("");
    for (const BadFile& bad : kBadFiles) EXPECT_EQ(0, zuk_.runSw(file(bad.content)).status) << bad.content;
}

TEST_F(SwFailure, ASignalDuringTheScanEndsTheProgramByItButLeavesNothingBehind) {
    for (const char* signal : {"HUP", "INT", "TERM"}) {
        // The scanner's parent is the program.
        zuk_.installSoftwareScannerThatFinds("", "", std::string("kill -") + signal + " $PPID");
        const ShellResult result =
            shell("exec env " + zuk_.command() + "sw --home " + zuk_.path("home") + " " + file());
        EXPECT_GT(result.status, 128) << signal;
        EXPECT_EQ("", result.out) << signal;
        EXPECT_TRUE(zuk_.leftNothingBehind()) << signal;
    }
}
