#include "sw/scanner.h"

#include <gtest/gtest.h>

#include "tests/support/environment.h"
#include "tests/support/software_fixture.h"

namespace {

constexpr char kHere[] = "SW_ExecuteScanner()";

class SwScanner : public SoftwareFixture {
  protected:
    int execute() { return SW_ExecuteScanner(ctx, L"/c", L"/s", warnings, output); }

    std::wstring warnings = L"w";
    std::wstring output = L"o";
};

TEST_F(SwScanner, NullContextIs3AndTouchesNothing) {
    EXPECT_EQ(3, SW_ExecuteScanner(nullptr, L"/c", L"/s", warnings, output));
    EXPECT_EQ(L"w", warnings);
    EXPECT_EQ(L"o", output);
}

TEST_F(SwScanner, SpeaksInOrder) {
    installScanner("zuksw", "echo hello");
    log.clear();
    ASSERT_EQ(0, execute());
    const std::string out = narrow(output);
    const std::string warn = narrow(warnings);
    const std::vector<std::string> expected = {
        "Output File: " + out,
        "Warning file: " + warn,
        "Executing command: [" + home() + "/zuksw -c \"/c\" -o \"" + out + "\" -e \"" + warn +
            "\" -i \"/s\"]",
        "STDOUT data: [hello]",
        "Exit code: 0 (OK)",
    };
    EXPECT_EQ(expected, log.textsOf(kHere));
    for (const LogLine& line : log.lines) EXPECT_EQ(2, line.level) << line;
}

TEST_F(SwScanner, ScannerGetsTheEightArguments) {
    installScanner("zuksw", "printf '%s\\n' \"$@\" > '" + folder.path() + "/arguments'");
    ASSERT_EQ(0, execute());
    EXPECT_EQ("-c\n/c\n-o\n" + narrow(output) + "\n-e\n" + narrow(warnings) + "\n-i\n/s\n",
              readFile(folder.path() + "/arguments"));
}

TEST_F(SwScanner, PathsAreNamedForWhatTheyHold) {
    installScanner("zuksw", "exit 0");
    ASSERT_EQ(0, execute());
    EXPECT_EQ(filesNamed("out_").at(0), narrow(output));
    EXPECT_EQ(filesNamed("warning_").at(0), narrow(warnings));
}

struct ExitCase {
    const char* body;
    int status;
    int lastRc;
};

TEST_F(SwScanner, ExitStatusDecides) {
    const ExitCase kCases[] = {{"exit 0", 0, 0},   {"exit 3", 202, 3},     {"exit 1", 203, 1},
                               {"exit 2", 203, 2}, {"exit 255", 203, 255}, {"kill -9 $$", 203, 137},
                               {"exit 4", 203, 4}};
    for (const ExitCase& c : kCases) {
        installScanner("zuksw", c.body);
        EXPECT_EQ(c.status, execute()) << c.body;
        EXPECT_EQ(c.lastRc, ctx->lastRc) << c.body;
    }
}

TEST_F(SwScanner, FailedExitIsLoggedAsAnError) {
    installScanner("zuksw", "exit 3");
    execute();
    EXPECT_TRUE(log.has(0, kHere, "Exit code: 3 (ERROR)"));
}

TEST_F(SwScanner, MissingScannerIs203) {
    ctx->lastRc = 5;
    EXPECT_EQ(203, execute());
    EXPECT_EQ(-1, ctx->lastRc);
    EXPECT_TRUE(log.has(0, kHere, "Execution of command failed.."));
}

TEST_F(SwScanner, OutputIsLoggedByLines) {
    installScanner("zuksw", "printf 'a\\r\\nb\\nrest'");
    execute();
    EXPECT_TRUE(log.has(2, kHere, "STDOUT data: [a]"));
    EXPECT_TRUE(log.has(2, kHere, "STDOUT data: [b]"));
    EXPECT_FALSE(log.has(2, kHere, "STDOUT data: [rest]"));
}

TEST_F(SwScanner, LibraryPathIsExtended) {
    const EnvironmentVariable variable("LD_LIBRARY_PATH", "/usr/lib");
    installScanner("zuksw", "printf '%s' \"$LD_LIBRARY_PATH\" > '" + folder.path() + "/path'");
    ASSERT_EQ(0, execute());
    EXPECT_EQ(home() + ":/usr/lib", readFile(folder.path() + "/path"));
}

TEST_F(SwScanner, FailedNameIsHandedOnAndTheReturnCodeKept) {
    ctx->lastRc = 5;
    loseDirectory();
    EXPECT_EQ(6, execute());
    EXPECT_TRUE(log.has(0, kHere, "Can't create output file"));
    EXPECT_EQ(5, ctx->lastRc);
    EXPECT_EQ(L"w", warnings);
    ctx->tmpDir->initialised = true;
}

TEST_F(SwScanner, WorksWithoutALogger) {
    installScanner("zuksw", "echo a; exit 3");
    ZUKlog* const own = ctx->log;
    ctx->log = nullptr;
    EXPECT_EQ(202, execute());
    ctx->log = own;
}

}  // namespace
