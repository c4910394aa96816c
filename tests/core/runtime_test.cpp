#include "platform/runtime.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>

#include <climits>
#include <csignal>
#include <filesystem>
#include <set>

#include "platform/file_descriptor.h"
#include "tests/support/run_command.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace std::string_literals;

std::set<std::string> openDescriptors() {
    std::set<std::string> numbers;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        numbers.insert(entry.path().filename().string());
    }
    return numbers;
}

bool hasChild() {
    return waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD;
}

// Installs a signal's action until destroyed.
class SignalAction {
  public:
    SignalAction(int number, void (*handler)(int)) : number_(number) {
        struct sigaction action {};
        action.sa_handler = handler;
        sigaction(number, &action, &previous_);
    }
    ~SignalAction() { sigaction(number_, &previous_, nullptr); }
    SignalAction(const SignalAction&) = delete;
    SignalAction& operator=(const SignalAction&) = delete;

  private:
    int number_;
    struct sigaction previous_ {};
};

TEST(Runtime, GivesTheOutputByteByByte) {
    EXPECT_EQ("a\nb\r\n\xFF", outputOf("/usr/bin/printf \"a\\nb\\r\\n\\377\""));
}

TEST(Runtime, GivesALongOutputWhole) {
    EXPECT_EQ(1000000U, outputOf("/usr/bin/head -c 1000000 /dev/zero").size());
}

TEST(Runtime, ReportsHowTheChildEnded) {
    const struct {
        const char* body;
        int status;
    } cases[] = {
        {"exit 0", 0},         {"exit 1", 1},          {"exit 3", 3},          {"exit 255", 255},
        {"kill -HUP $$", 129}, {"kill -KILL $$", 137}, {"kill -TERM $$", 143}, {"kill -PIPE $$", 141},
    };
    const TemporaryFolder folder;
    for (const auto& c : cases) EXPECT_EQ(c.status, statusOf(folder.script("scanner", c.body))) << c.body;
}

TEST(Runtime, ReportsTheSameStatusAtEveryCall) {
    const TemporaryFolder folder;
    const auto process = start(folder.script("scanner", "exit 3"));
    readAll(*process->standardOutput());
    EXPECT_EQ(3, process->resultValue());
    EXPECT_EQ(3, process->exitStatus());
    EXPECT_EQ(3, process->exitStatus());
}

TEST(Runtime, WaitsForTheEndOfAChildThatClosedItsOutput) {
    const TemporaryFolder folder;
    EXPECT_EQ(5, statusOf(folder.script("scanner", "exec >&-; sleep 0.1; exit 5")));
}

TEST(Runtime, KeepsTheOutputOfAChildThatHasEnded) {
    const auto process = start("/bin/echo late");
    process->exitStatus();
    EXPECT_EQ("late\n", readAll(*process->standardOutput()));
}

TEST(Runtime, GivesNullWhenTheCommandCannotBeStarted) {
    const TemporaryFolder folder;
    const std::string commands[] = {
        "",
        "  ",
        "\"\"",
        folder.path() + "/missing",
        folder.path(),  // a directory
        folder.path() + "/missing/scanner",
        folder.file("plain", "#!/bin/sh\n", 0644),  // not executable
        folder.file("text", "echo no shell guesses what this is\n", 0755),
        folder.file("empty", "", 0755),
        folder.file("orphan", "#!/no/such/interpreter\n", 0755),
    };
    for (const std::string& command : commands) EXPECT_EQ(nullptr, start(command)) << '[' << command << ']';
}

TEST(Runtime, LeavesNothingBehindWhenTheCommandCannotBeStarted) {
    const auto before = openDescriptors();
    start("/no/such/program");
    EXPECT_EQ(before, openDescriptors());
    EXPECT_FALSE(hasChild());
}

TEST(Runtime, DoesNotSearchForTheProgram) {
    EXPECT_EQ(nullptr, start("printf x"));
}

TEST(Runtime, UsesNoShell) {
    EXPECT_EQ("$HOME;*|&\n", outputOf("/bin/echo $HOME;*|&"));
}

TEST(Runtime, HandsOverTheArguments) {
    const TemporaryFolder folder;
    const std::string command = folder.script("scanner", "printf '<%s>' \"$@\"");
    EXPECT_EQ("<-c><a b><><d>", outputOf(command + "  -c \"a b\" \"\" d "));
}

TEST(Runtime, TheProgramsNameIsItsPath) {
    EXPECT_EQ("/usr/bin/head: ", outputOf("/bin/sh -c \"/usr/bin/head /no 2>&1\"").substr(0, 15));
}

TEST(Runtime, GivesTheChildExactlyTheGivenEnvironment) {
    const struct {
        std::string block;
        std::string seen;
    } cases[] = {
        {"A=1\0B=two words\0C=\0\0\0\0"s, "A=1\nB=two words\nC=\n"},  // last entry with a NUL of its own
        {"A=1\0B=2\0\0\0"s, "A=1\nB=2\n"},                            // and without
        {"A=1\0\0B=2\0\0\0\0"s, "A=1\n"},                             // the first empty entry is the end
        {"A=1\0A=2\0\0\0\0"s, "A=1\nA=2\n"},
        {"\0\0\0"s, ""},
    };
    for (const auto& c : cases) {
        const std::unique_ptr<Process> process(Runtime().execute(L"/usr/bin/env", c.block.data()));
        EXPECT_EQ(c.seen, readAll(*process->standardOutput()));
    }
}

TEST(Runtime, StandardErrorIsInherited) {
    char target[PATH_MAX] = {};
    ASSERT_GT(readlink("/proc/self/fd/2", target, sizeof target - 1), 0);
    EXPECT_EQ(target + "\n"s, outputOf("/bin/readlink /proc/self/fd/2"));
}

TEST(Runtime, NoOtherDescriptorIsInherited) {
    const FileDescriptor low(open("/dev/zero", O_RDONLY));
    const FileDescriptor high(fcntl(low.get(), F_DUPFD, 500));
    ASSERT_TRUE(high.valid());
    EXPECT_EQ("0\n1\n2\n3\n", outputOf("/bin/ls /proc/self/fd"));  // 3 is the folder that ls reads
}

TEST(Runtime, TheChildBlocksNoSignal) {
    sigset_t some;
    sigset_t previous;
    sigemptyset(&some);
    sigaddset(&some, SIGTERM);
    sigaddset(&some, SIGRTMAX);
    pthread_sigmask(SIG_BLOCK, &some, &previous);
    const std::string blocked = outputOf("/bin/grep SigBlk /proc/self/status");
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    EXPECT_EQ("SigBlk:\t0000000000000000\n", blocked);
}

TEST(Runtime, TheChildIgnoresNoSignal) {
    const SignalAction pipe(SIGPIPE, SIG_IGN);
    const SignalAction last(SIGRTMAX, SIG_IGN);
    EXPECT_EQ("SigIgn:\t0000000000000000\n", outputOf("/bin/grep SigIgn /proc/self/status"));
}

volatile std::sig_atomic_t handlerCalls = 0;
void countCall(int) {
    handlerCalls = handlerCalls + 1;
}

TEST(Runtime, KeepsTheHostsSignalActionsAndMask) {
    const SignalAction counting(SIGUSR1, countCall);
    handlerCalls = 0;
    statusOf("/bin/true");
    raise(SIGUSR1);
    EXPECT_EQ(1, handlerCalls);
}

TEST(Runtime, GoesOnAfterAnInterruption) {
    const SignalAction counting(SIGALRM, countCall);  // without SA_RESTART
    handlerCalls = 0;
    const itimerval every5ms{{0, 5000}, {0, 5000}};
    const itimerval never{};
    const TemporaryFolder folder;
    const std::string command = folder.script("scanner", "sleep 0.2; echo x; exec >&-; sleep 0.2; exit 4");
    setitimer(ITIMER_REAL, &every5ms, nullptr);
    const auto process = start(command);
    const std::string output = readAll(*process->standardOutput());
    const int status = process->exitStatus();
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_EQ("x\n", output);
    EXPECT_EQ(4, status);
    EXPECT_GT(handlerCalls, 0);
}

TEST(Runtime, LeavesNothingBehindWhenTheOutputWasRead) {
    const auto before = openDescriptors();
    outputOf("/bin/echo x");
    EXPECT_EQ(before, openDescriptors());
    EXPECT_FALSE(hasChild());
}

TEST(Runtime, LeavesNothingBehindWhenTheOutputWasNotReadToItsEnd) {
    const auto before = openDescriptors();
    start("/usr/bin/yes")->standardOutput()->read();  // it writes for ever, so it ends by losing its reader
    EXPECT_EQ(before, openDescriptors());
    EXPECT_FALSE(hasChild());
}

TEST(Runtime, RunsChildrenSideBySide) {
    const auto longer = start("/bin/sh -c \"sleep 0.3; echo longer; exit 1\"");
    const auto shorter = start("/bin/sh -c \"echo shorter; exit 2\"");
    EXPECT_EQ("shorter\n", readAll(*shorter->standardOutput()));
    EXPECT_EQ("longer\n", readAll(*longer->standardOutput()));
    EXPECT_EQ(2, shorter->exitStatus());
    EXPECT_EQ(1, longer->exitStatus());
}

}  // namespace
