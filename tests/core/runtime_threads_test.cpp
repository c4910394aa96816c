#include <gtest/gtest.h>
#include <sys/wait.h>

#include <atomic>
#include <thread>

#include "platform/child.h"
#include "tests/support/forked_host.h"
#include "tests/support/run_command.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr int kThreads = 4;
constexpr int kRuns = 25;

// Calls body(number of the thread) kRuns times in each of kThreads threads; counts how often it is false.
template <typename Body>
int failuresInThreads(Body body) {
    std::atomic<int> failures{0};
    std::vector<std::thread> threads(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        threads[static_cast<std::size_t>(number)] = std::thread([&, number] {
            for (int run = 0; run < kRuns; ++run) {
                if (!body(number)) ++failures;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    return failures;
}

TEST(RuntimeThreads, NoChildGetsThePipeOfAnother) {
    EXPECT_EQ(0, failuresInThreads([](int) { return outputOf("/bin/ls /proc/self/fd") == "0\n1\n2\n3\n"; }));
}

TEST(RuntimeThreads, EachGetsTheStatusOfItsOwnChild) {
    const TemporaryFolder folder;
    const std::string command = folder.script("scanner", "exit $1");
    EXPECT_EQ(0, failuresInThreads(
                     [&](int number) { return statusOf(command + " " + std::to_string(number)) == number; }));
}

TEST(RuntimeThreads, TheStatusIsTrueWhileAThreadReapsEveryChild) {
    if (!keepsExitStatus()) GTEST_SKIP() << "needs Linux 6.15";
    const TemporaryFolder folder;
    const std::string command = folder.script("scanner", "exit 7");
    // In a process of its own: the reaper must not take the children of other tests.
    EXPECT_EQ(0, inForkedHost([&] {
                  std::atomic<bool> done{false};
                  std::thread reaper([&] {
                      while (!done) waitpid(-1, nullptr, WNOHANG);
                  });
                  int wrong = 0;
                  for (int run = 0; run < 4 * kRuns; ++run) {
                      if (statusOf(command) != 7) ++wrong;
                  }
                  done = true;
                  reaper.join();
                  return wrong;
              }));
}

}  // namespace
