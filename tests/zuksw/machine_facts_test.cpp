// What conditions learn of the system and of the processes that run.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/zuksw/scan_fixture.h"

namespace {

class MachineFactsTest : public ScanTest {};

TEST_F(MachineFactsTest, ReadsTheReleaseOfTheScannedTree) {
    file("/usr/lib/os-release", "ID=fancy\nVERSION_ID=\"7.1\"\nPRETTY_NAME='Fancy 7'\n#x\n");
    link("../usr/lib/os-release", "/etc/os-release");
    EXPECT_EQ(
        "7.1",
        scan(signature("<System key=\"os.id\" eq=\"fancy\" scheme=\"text\"/><System key=\"os.version_id\" "
                       "set=\"v\"/>",
                       {"v"}))
            .values("v"));
    EXPECT_EQ("no", truth("<System key=\"os.variant_id\"/>"));
    EXPECT_EQ("yes", truth("<System key=\"kernel.name\" eq=\"Linux\" scheme=\"text\"/>"));
}

TEST_F(MachineFactsTest, OsReleaseIsReadAsShellsReadIt) {
    file("/etc/os-release", " ID=a\r\nNAME=\"b \\\"c\\\" \\d\"  \n");
    EXPECT_EQ("a", scan(signature("<System key=\"os.id\" set=\"v\"/>", {"v"})).values("v"));
    EXPECT_EQ("b \"c\" \\d", scan(signature("<System key=\"os.name\" set=\"v\"/>", {"v"})).values("v"));
}

TEST_F(MachineFactsTest, TheLibcOfAnotherRootIsFoundInEveryLayout) {
    const std::string libc = "\177ELF GNU C Library (GNU libc) stable release version 2.36.\n";
    for (const char* directory : {"/lib64", "/lib/aarch64-linux-gnu"}) {
        file(directory + std::string("/libc.so.6"), libc);
        EXPECT_EQ("2.36", scan(signature("<System key=\"libc.version\" set=\"v\"/>", {"v"})).values("v"))
            << directory;
        std::filesystem::remove(treePath(directory + std::string("/libc.so.6")));
    }
}

TEST_F(MachineFactsTest, ProcessesOfAnotherRootAreUndecided) {
    EXPECT_EQ("unknown", truth("<Process name=\"*\"/>"));
    usePrefix_ = false;
    EXPECT_EQ("yes", truth("<Process name=\"zuksw\" as=\"p\"/><Test value=\"${p.pid}\" gt=\"0\"/>"));
    EXPECT_EQ("yes", truth("<Process path=\"/**/zuksw\"/>"));
    EXPECT_EQ("no", truth("<Process name=\"no-such-process\"/>"));
    EXPECT_EQ("unknown", truth("<Process name=\"zuksw\"/>", {{"processes/Enabled", "no"}}));
}

// The sandbox lets no process look at the executable of another.
TEST_F(MachineFactsTest, ExecutablesOfOtherProcessesAreSeen) {
    usePrefix_ = false;
    std::filesystem::copy_file("/bin/sleep", treePath("/sleeper"));
    const pid_t sleeper = ::fork();
    if (sleeper == 0) {
        ::execl(treePath("/sleeper").c_str(), "sleeper", "60", nullptr);
        ::_exit(1);
    }
    while (std::filesystem::read_symlink("/proc/" + std::to_string(sleeper) + "/exe") != treePath("/sleeper"))
        ::usleep(1000);
    EXPECT_EQ("yes", truth("<Process path=\"" + treePath("/sleeper") + "\"/>"));
    EXPECT_EQ("yes", truth("<File name=\"sleeper\" as=\"f\"/><Process exe=\"f\"/>"));
    ::kill(sleeper, SIGKILL);
    ::waitpid(sleeper, nullptr, 0);
}

TEST_F(MachineFactsTest, ProcessArgumentsAreNotCapturedUnlessTold) {
    usePrefix_ = false;
    const std::string text = "<Process name=\"zuksw\" argsMatch=\"-(?P&lt;v&gt;c) \"/>";
    EXPECT_EQ(0U, scan(signature(text, {"v"})).matches.at(0).variables.count("v"));
    EXPECT_EQ("c", scan(signature(text, {"v"}), {{"processes/CaptureArguments", "yes"}}).values("v"));
}

}  // namespace
