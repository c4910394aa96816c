#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/zuk_program.h"

using testing::AllOf;
using testing::HasSubstr;

namespace {

struct BadScanner {
    const char* body;
    const char* told;
    const char* status;
};

const BadScanner kBadScanners[] = {
    {"exit 3", "ended with exit status 3", "status 103"},
    {"kill -9 $$", "was ended by signal 9", "status 103"},
    {"exit 0", "could not be read", "status 104"},
    {"printf '<Inventory><Memory' > \"$4\"", "could not be read", "status 104"},
    {"printf '<Inventory>text</Inventory>' > \"$4\"", "could not be read", "status 104"},
};

}  // namespace

TEST(HwFailure, ABadScannerIsToldWithTheRemedyAndStatus1) {
    for (const BadScanner& bad : kBadScanners) {
        const ZukProgram zuk;
        zuk.installScanner(bad.body);
        const ShellResult result = zuk.runHw();
        EXPECT_EQ(1, result.status) << bad.body;
        EXPECT_EQ("", result.out) << bad.body;
        EXPECT_THAT(result.err, AllOf(HasSubstr(bad.told), HasSubstr(bad.status), HasSubstr("-v")))
            << bad.body;
        EXPECT_TRUE(zuk.leftNothingBehind()) << bad.body;
    }
}

TEST(HwFailure, AMissingScannerIsToldWithItsPlaceAndTheOption) {
    const ZukProgram zuk;
    const ShellResult result = zuk.runHw();
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err,
                AllOf(HasSubstr(zuk.path("home")), HasSubstr("--home DIR"), HasSubstr("status 103")));
}

TEST(HwFailure, WithoutATemporaryDirectoryTheVariableIsNamed) {
    const ZukProgram zuk;
    std::filesystem::remove(zuk.path("temp"));
    const ShellResult result = zuk.runHw();
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err, AllOf(HasSubstr("TEMP"), HasSubstr("status 6")));
}

TEST(HwFailure, AFullDiskUnderStandardOutputIsToldWithStatus1) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds("<Memory><TotalBytes>1</TotalBytes></Memory>");
    const ShellResult result = zuk.runHw(">/dev/full");
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err, HasSubstr("standard output: No space left on device"));
}

TEST(HwFailure, AClosedStandardOutputIsToldWithStatus1) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds("<Memory><TotalBytes>1</TotalBytes></Memory>");
    const ShellResult result = zuk.runHw(">&-");
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err, HasSubstr("cannot write to standard output"));
}

TEST(HwFailure, AReaderThatHasGoneEndsTheProgramQuietly) {
    const ZukProgram zuk;
    // More than a pipe holds, so that the program cannot get rid of it.
    zuk.installScanner(R"(awk 'BEGIN { printf "<Inventory>"
        for (i = 0; i < 20000; ++i) printf "<Memory><Note>%d</Note></Memory>", i
        printf "</Inventory>" }' > "$4")");
    const ShellResult result =
        shell("{ " + zuk.command() + "hw --home " + zuk.path("home") + "; echo $? >&2; } | head -1");
    EXPECT_EQ("Memory (20000)\n", result.out);
    EXPECT_EQ("141\n", result.err);  // 128 + SIGPIPE, like any filter
    EXPECT_TRUE(zuk.leftNothingBehind());
}

TEST(HwFailure, AReaderOfMessagesThatHasGoneDoesNotKeepTheLibraryFromCleaningUp) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds("<Memory><TotalBytes>1</TotalBytes></Memory>");
    zuk.runHw("-v 2>&1 >/dev/null | :");
    EXPECT_TRUE(zuk.leftNothingBehind());
}

TEST(HwFailure, ASignalDuringTheScanEndsTheProgramByItButLeavesNothingBehind) {
    for (const char* signal : {"HUP", "INT", "TERM"}) {
        const ZukProgram zuk;
        // The scanner's parent is the program.
        zuk.installScanner(std::string("kill -") + signal + " $PPID; exit 1");
        const ShellResult result = shell("exec env " + zuk.command() + "hw --home " + zuk.path("home"));
        EXPECT_GT(result.status, 128) << signal;
        EXPECT_EQ("", result.err) << signal;
        EXPECT_TRUE(zuk.leftNothingBehind()) << signal;
    }
}
