#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/cli/zuk_program.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace {

// A program that lies in a folder of its own, as an installation puts it.
class Home : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* folder : {"bin", "libexec/zuk/bin", "elsewhere"}) {
            fs::create_directories(zuk_.path(folder));
        }
        fs::copy_file(ZUK_BINARY_DIR "/bin/zuk", zuk_.path("bin/zuk"));
    }

    void installScanner(const std::string& path, const std::string& note) const {
        zuk_.folder().script(
            path, "printf '<Inventory><Memory><Note>" + note + "</Note></Memory></Inventory>' > \"$4\"");
    }
    ShellResult run(const std::string& program, const std::string& arguments = "memory") const {
        return shell("TEMP=" + zuk_.path("temp") + " " + zuk_.path(program) + " hw " + arguments);
    }

    ZukProgram zuk_;
};

}  // namespace

TEST_F(Home, IsTheProgramsOwnDirectoryWhenTheScannerIsThere) {
    installScanner("bin/zukhw", "beside");
    installScanner("libexec/zuk/bin/zukhw", "installed");
    EXPECT_EQ("Memory\n  Note  beside\n", run("bin/zuk").out);
}

TEST_F(Home, IsTheInstallationsDirectoryOtherwise) {
    installScanner("libexec/zuk/bin/zukhw", "installed");
    EXPECT_EQ("Memory\n  Note  installed\n", run("bin/zuk").out);
}

TEST_F(Home, IsFoundThroughASymbolicLinkToTheProgram) {
    installScanner("libexec/zuk/bin/zukhw", "installed");
    fs::create_symlink(zuk_.path("bin/zuk"), zuk_.path("elsewhere/inventory"));
    EXPECT_EQ("Memory\n  Note  installed\n", run("elsewhere/inventory").out);
}

TEST_F(Home, IsWhatTheOptionNamesWhateverLiesBeside) {
    installScanner("bin/zukhw", "beside");
    installScanner("elsewhere/zukhw", "named");
    EXPECT_EQ("Memory\n  Note  named\n", run("bin/zuk", "memory --home " + zuk_.path("elsewhere")).out);
}

TEST_F(Home, AFileThatCannotBeStartedIsNoScanner) {
    zuk_.folder().file("bin/zukhw", "");
    installScanner("libexec/zuk/bin/zukhw", "installed");
    EXPECT_EQ("Memory\n  Note  installed\n", run("bin/zuk").out);
}

TEST_F(Home, NoneAtAllLeavesItToTheInstallationFile) {
    if (fs::exists("/etc/zuk/zuk.ini")) GTEST_SKIP() << "this machine has an installation";
    const ShellResult result = run("bin/zuk");
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err, HasSubstr("/etc/zuk/zuk.ini"));
}
