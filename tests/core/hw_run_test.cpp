#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdlib>

#include "tests/support/environment.h"
#include "tests/support/hardware_fixture.h"

namespace {

constexpr char kRun[] = "ZUK_hw_run";

class HwRun : public HardwareFixture {
  protected:
    int returnCode() {
        int code = 99;
        EXPECT_EQ(0, ZUK_hw_get_returncode(ctx, &code));
        return code;
    }
    std::vector<std::string> filesNamed(const std::string& prefix) const {
        return ::filesNamed(*ctx->tmpDir, prefix);
    }
};

TEST_F(HwRun, NullContextIs3) {
    EXPECT_EQ(3, ZUK_hw_run(nullptr));
}

TEST_F(HwRun, SuccessIs0WithReturnCode0) {
    EXPECT_EQ(0, runWithOutput("<Inventory/>"));
    EXPECT_EQ(0, returnCode());
}

TEST_F(HwRun, SpeaksInOrder) {
    ASSERT_EQ(0, runWithOutput("<Inventory><Memory><A>1</A></Memory></Inventory>"));
    const std::string config = filesNamed("config").at(0);
    const std::string output = filesNamed("out_").at(0);
    const std::vector<std::string> expected = {
        "Generating config file: [" + config + "]",
        "Executing ZUK [" + home() + "/zukhw -c \"" + config + "\" -o \"" + output + "\"]",
        "Exit code: 0 (OK)",
        "Parsing XML file",
        "Parse finish. 1 groups successfully retrieved",
    };
    EXPECT_EQ(expected, log.textsOf(kRun));
    for (const LogLine& line : log.lines) EXPECT_EQ(2, line.level) << line;
}

TEST_F(HwRun, ScannerGetsTheFourArguments) {
    installScanner("zukhw", "printf '%s\\n' \"$#\" \"$1\" \"$2\" \"$3\" \"$4\" > '" + folder.path() +
                                "/arguments'\necho '<Inventory/>' > \"$4\"");
    ASSERT_EQ(0, ZUK_hw_run(ctx));
    EXPECT_EQ("4\n-c\n" + filesNamed("config").at(0) + "\n-o\n" + filesNamed("out_").at(0) + "\n",
              readFile(folder.path() + "/arguments"));
}

TEST_F(HwRun, ScannerReadsTheConfigurationFile) {
    ZUK_hw_setopt(ctx, 4, 1);
    installScanner("zukhw", "cat \"$2\" > '" + folder.path() + "/seen'\necho '<Inventory/>' > \"$4\"");
    ASSERT_EQ(0, ZUK_hw_run(ctx));
    EXPECT_NE(std::string::npos,
              readFile(folder.path() + "/seen").find("\t\t<Group Name=\"Operating System\"/>\n"));
}

struct PathCase {
    const char* before;
    std::string after;
};

TEST_F(HwRun, ScannerSeesTheLibraryPathExtended) {
    const PathCase kCases[] = {{nullptr, home()}, {"/a", home() + ":/a"}, {"", home() + ":"}};
    installScanner("zukhw",
                   "printf '%s' \"$LD_LIBRARY_PATH\" > '" + folder.path() + "/path'\necho '<I/>' > \"$4\"");
    for (const PathCase& c : kCases) {
        const EnvironmentVariable variable("LD_LIBRARY_PATH", c.before);
        ASSERT_EQ(0, ZUK_hw_run(ctx));
        EXPECT_EQ(c.after, readFile(folder.path() + "/path"));
    }
}

TEST_F(HwRun, StandardOutputIsLoggedByLines) {
    installScanner("zukhw", "printf 'a\\r\\nsecond line\\n\\nb'\necho '<I/>' > \"$4\"");
    ASSERT_EQ(0, ZUK_hw_run(ctx));
    EXPECT_TRUE(log.has(2, kRun, "STDOUT data: [a]"));
    EXPECT_TRUE(log.has(2, kRun, "STDOUT data: [second line]"));
    EXPECT_TRUE(log.has(2, kRun, "STDOUT data: []"));
    EXPECT_FALSE(log.has(2, kRun, "STDOUT data: [b]"));
}

struct BadScanner {
    const char* about;
    const char* body;
    int status;
    int returnCode;
};

TEST_F(HwRun, BadScanners) {
    const BadScanner kCases[] = {
        {"exits 1", "exit 1", 103, 1},
        {"exits 3", "exit 3", 103, 3},
        {"exits 255", "exit 255", 103, 255},
        {"is killed", "kill -KILL $$", 103, 137},
        {"dumps", "kill -SEGV $$", 103, 139},
        {"writes a good file and fails", "echo '<I/>' > \"$4\"; exit 1", 103, 1},
        {"writes no file", "exit 0", 104, 0},
        {"writes an empty file", ": > \"$4\"", 104, 0},
        {"writes half a file", "printf '<I><Memory><A>1</A>' > \"$4\"", 104, 0},
        {"writes no XML", "head -c 5000 /dev/urandom > \"$4\"", 104, 0},
        {"makes a directory of it", "mkdir \"$4\"", 104, 0},
        {"makes a pipe of it", "mkfifo \"$4\"", 104, 0},
        {"writes another group", "echo '<I><Nothing/></I>' > \"$4\"", 104, 0},
        {"closes its output", "exec >&-; echo '<I/>' > \"$4\"", 0, 0},
    };
    for (const BadScanner& c : kCases) {
        installScanner("zukhw", c.body);
        EXPECT_EQ(c.status, ZUK_hw_run(ctx)) << c.about;
        EXPECT_EQ(c.returnCode, returnCode()) << c.about;
        for (const std::string& made : filesNamed("out_")) std::filesystem::remove_all(made);
    }
}

TEST_F(HwRun, FailedExitIsLoggedAsAnError) {
    installScanner("zukhw", "exit 7");
    ZUK_hw_run(ctx);
    EXPECT_TRUE(log.has(0, kRun, "Exit code: 7 (ERROR)"));
}

TEST_F(HwRun, MissingScannerIs103) {
    EXPECT_EQ(103, ZUK_hw_run(ctx));
    EXPECT_EQ(-1, returnCode());
    EXPECT_TRUE(log.has(0, kRun, "Execution of command failed.."));
}

TEST_F(HwRun, FloodOfOutputIsReadToItsEnd) {
    installScanner("zukhw", "yes 'some line of text' | head -n 100000\necho '<I/>' > \"$4\"");
    EXPECT_EQ(0, ZUK_hw_run(ctx));
    EXPECT_EQ(100000u, log.count(2, kRun, "STDOUT data: [some line of text]"));
}

TEST_F(HwRun, LeavesNoChildBehind) {
    ASSERT_EQ(0, runWithOutput("<I/>"));
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    EXPECT_EQ(ECHILD, errno);
}

TEST_F(HwRun, ConfigurationThatCannotBeWrittenIs102) {
    std::filesystem::remove_all(narrow(ctx->tmpDir->getBasePath()));
    EXPECT_EQ(102, ZUK_hw_run(ctx));
    EXPECT_TRUE(log.has(0, kRun, "Config file creation error"));
    EXPECT_EQ(-1, returnCode());
}

TEST_F(HwRun, FailedRunDropsTheResultsBefore) {
    ASSERT_EQ(0, runWithOutput("<I><Memory><A>1</A></Memory></I>"));
    installScanner("zukhw", "exit 1");
    ZUK_hw_run(ctx);
    EXPECT_TRUE(ctx->results.at(3).empty());
    EXPECT_TRUE(ctx->fields.at(3).empty());
}

TEST_F(HwRun, SecondRunReplacesTheFirst) {
    ASSERT_EQ(0, runWithOutput("<I><Memory><A>1</A></Memory></I>"));
    ASSERT_EQ(0, runWithOutput("<I><Memory><A>2</A></Memory></I>"));
    ASSERT_EQ(1u, ctx->results.at(3).size());
    EXPECT_EQ(L"2", ctx->results.at(3).front().front().second);
}

TEST_F(HwRun, BothMapsKeepAnEntryForEverySlot) {
    ASSERT_EQ(0, runWithOutput("<I/>"));
    EXPECT_EQ(52u, ctx->results.size());
    EXPECT_EQ(52u, ctx->fields.size());
}

TEST_F(HwRun, FilesStayUntilTheContextIsFreed) {
    ASSERT_EQ(0, runWithOutput("<I/>"));
    ASSERT_EQ(0, runWithOutput("<I/>"));
    EXPECT_EQ(2u, filesNamed("config").size());
    EXPECT_EQ(2u, filesNamed("out_").size());
    for (const std::string& file : filesNamed("config")) EXPECT_TRUE(std::filesystem::exists(file));
}

// The whole way: everything that init, runs and frees made on disk is gone.
TEST_F(HwRun, NothingIsLeftOnDisk) {
    LogRecorder otherLog;
    ZUKCtx* otherLibrary = nullptr;
    ASSERT_EQ(0,
              ZUK_init("t", nullptr, nullptr, widen(temp()).c_str(), widen(home()).c_str(), &otherLibrary));
    const std::string path = narrow(otherLibrary->tmpDir->getBasePath());
    ZUKHwCtx* other = nullptr;
    ASSERT_EQ(0, ZUK_hw_init(otherLibrary, nullptr, nullptr, &other));
    installScanner("zukhw", "echo '<I/>' > \"$4\"");
    ASSERT_EQ(0, ZUK_hw_run(other));
    EXPECT_EQ(0, ZUK_hw_free(other));
    EXPECT_EQ(0, ZUK_free(otherLibrary));
    EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
