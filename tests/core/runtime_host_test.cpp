// The process runner in hosts that make its life hard. Each test runs in a process of its own.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/personality.h>
#include <sys/syscall.h>

#include <csignal>

#include "platform/child.h"
#include "tests/support/forked_host.h"
#include "tests/support/old_kernel.h"
#include "tests/support/run_command.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr int kUnusable = 99;  // the machine lets us not set up the host

void reapAll(int) {
    const int error = errno;
    while (waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    errno = error;
}

void handleChildSignal(void (*handler)(int), int flags) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigaction(SIGCHLD, &action, nullptr);
}

bool childSignalBlocked() {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    return sigismember(&mask, SIGCHLD) == 1;
}

// The kernel calls itself 2.6 from here on.
void pretendOldKernel() {
    personality(UNAME26);
}

// The status asked for when the child has ended and the host knows: a handler has run by then.
int statusAfterTheEnd(const std::string& command) {
    const auto process = start(command);
    readAll(*process->standardOutput());
    siginfo_t end{};
    waitid(P_ALL, 0, &end, WEXITED | WNOWAIT);
    return process->exitStatus();
}

TEST(RuntimeHost, GivesTheNullDeviceAsStandardInput) {
    EXPECT_EQ(0, inForkedHost([] {
                  dup2(open("/dev/zero", O_RDONLY), STDIN_FILENO);
                  return outputOf("/bin/readlink /proc/self/fd/0") == "/dev/null\n" ? 0 : 1;
              }));
}

TEST(RuntimeHost, WorksWithStandardStreamsClosed) {
    const std::vector<int> cases[] = {{0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}};
    for (const std::vector<int>& closed : cases) {
        const int result = inForkedHost([&] {
            for (const int descriptor : closed) close(descriptor);
            const bool errorOpen = closed.back() != 2;
            if (outputOf("/bin/readlink /proc/self/fd/0") != "/dev/null\n") return 1;
            // The last number is the folder that ls reads.
            if (outputOf("/bin/ls /proc/self/fd") != (errorOpen ? "0\n1\n2\n3\n" : "0\n1\n2\n")) return 2;
            return 0;
        });
        EXPECT_EQ(0, result) << testing::PrintToString(closed);
    }
}

TEST(RuntimeHost, GivesNullWithoutAFreeDescriptor) {
    EXPECT_EQ(0, inForkedHost([] {
                  while (open("/dev/null", O_RDONLY) >= 0) {
                  }
                  return start("/bin/true") == nullptr ? 0 : 1;
              }));
}

TEST(RuntimeHost, TellsTheTrueStatusWhenSigchldIsIgnored) {
    const TemporaryFolder folder;
    const std::string exits = folder.script("exits", "exit 7");
    const std::string dies = folder.script("dies", "kill -KILL $$");
    for (const int flags : {0, SA_NOCLDWAIT}) {
        const int result = inForkedHost([&] {
            handleChildSignal(flags == 0 ? SIG_IGN : SIG_DFL, flags);
            const bool known = keepsExitStatus();
            if (statusOf(exits) != (known ? 7 : 255)) return 1;
            if (statusOf(dies) != (known ? 137 : 255)) return 2;
            return 0;
        });
        EXPECT_EQ(0, result) << flags;
    }
}

TEST(RuntimeHost, TellsTheTrueStatusWhenAHandlerReapsEveryChild) {
    const TemporaryFolder folder;
    const std::string exits = folder.script("exits", "exit 7");
    const std::string dies = folder.script("dies", "kill -KILL $$");
    EXPECT_EQ(0, inForkedHost([&] {
                  handleChildSignal(reapAll, SA_RESTART);
                  if (statusAfterTheEnd(exits) != 7) return 1;
                  return statusAfterTheEnd(dies) == 137 ? 0 : 2;
              }));
}

TEST(RuntimeHost, ReapsNoOtherChildOfTheHost) {
    EXPECT_EQ(0, inForkedHost([] {
                  const pid_t other = fork();
                  if (other == 0) _exit(5);
                  statusOf("/bin/true");
                  start("/no/such/program");
                  int status = 0;
                  return waitpid(other, &status, 0) == other && WEXITSTATUS(status) == 5 ? 0 : 1;
              }));
}

TEST(RuntimeHost, HoldsSigchldBackOnlyWhereTheStatusWouldBeLost) {
    const int result = inForkedHost([] {
        const auto process = start("/bin/true");
        return childSignalBlocked() == !keepsExitStatus() ? 0 : 1;
    });
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, KeepsTheStatusFromAHandlerThatReapsEveryChild) {
    const TemporaryFolder folder;
    const std::string exits = folder.script("exits", "exit 7");
    const int result = inForkedHost([&] {
        pretendOldKernel();
        handleChildSignal(reapAll, SA_RESTART);
        return statusAfterTheEnd(exits) == 7 ? 0 : 1;
    });
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, HoldsSigchldBackUntilTheEnd) {
    const int result = inForkedHost([&] {
        pretendOldKernel();
        const auto process = start("/bin/true");
        const bool before = childSignalBlocked();
        process->exitStatus();
        return before && !childSignalBlocked() ? 0 : 1;
    });
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, LetsSigchldThroughAfterAFailedStart) {
    const int result = inForkedHost([] {
        pretendOldKernel();
        start("/no/such/program");
        return childSignalBlocked() ? 1 : 0;
    });
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, ALostStatusIsNotZero) {
    const int result = inForkedHost([] {
        pretendOldKernel();
        handleChildSignal(SIG_IGN, 0);
        return statusOf("/bin/true") == 255 ? 0 : 1;
    });
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, AStatusThatTheKernelDoesNotTellIsNotZero) {
    const int result = inForkedHost([] {
        if (!takeAway({SYS_ioctl, 1, 0xC040FF0B, ENOTTY})) return kUnusable;  // PIDFD_GET_INFO
        handleChildSignal(SIG_IGN, 0);
        return statusOf("/bin/true") == 255 ? 0 : 1;
    });
    if (result == kUnusable) GTEST_SKIP() << "needs seccomp";
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, AStatusThatCannotBeAskedForIsNotZero) {
    const int result = inForkedHost([] {
        if (!takeAway({SYS_waitid, -1, 0, EPERM})) return kUnusable;
        return statusOf("/bin/true") == 255 ? 0 : 1;
    });
    if (result == kUnusable) GTEST_SKIP() << "needs seccomp";
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, NoOtherDescriptorIsInheritedWithoutCloseRange) {
    const int result = inForkedHost([] {
        if (!takeAway({SYS_close_range, -1, 0, ENOSYS})) return kUnusable;
        const int low = open("/dev/zero", O_RDONLY);
        fcntl(low, F_DUPFD, 500);
        return outputOf("/bin/ls /proc/self/fd") == "0\n1\n2\n3\n" ? 0 : 1;
    });
    if (result == kUnusable) GTEST_SKIP() << "needs seccomp";
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, WaitsByNumberWhereADescriptorCannotBeWaitedOn) {
    const TemporaryFolder folder;
    const std::string exits = folder.script("exits", "exit 7");
    const int result = inForkedHost([&] {
        if (!takeAway({SYS_waitid, 0, P_PIDFD, EINVAL})) return kUnusable;
        return statusOf(exits) == 7 ? 0 : 1;
    });
    if (result == kUnusable) GTEST_SKIP() << "needs seccomp";
    EXPECT_EQ(0, result);
}

TEST(RuntimeOldKernel, WaitsByNumberForAChildWithoutADescriptor) {
    Child child;
    child.pid = fork();
    if (child.pid == 0) _exit(9);
    EXPECT_EQ(9, waitForEnd(child));
}

TEST(RuntimeOldKernel, TheStatusOfAChildWithoutADescriptorIsLostToAnotherWait) {
    Child child;
    child.pid = fork();
    if (child.pid == 0) _exit(0);
    waitpid(child.pid, nullptr, 0);
    EXPECT_EQ(255, waitForEnd(child));
}

}  // namespace
