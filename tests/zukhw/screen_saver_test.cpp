// Settings of screen savers, and the group ScreenSaverInfo.
#include "scanners/zukhw/screen_saver.h"

#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

struct SpanCase {
    const char* text;
    std::optional<std::uint64_t> seconds;
};

TEST(TimeSpan, IsASumOfNumbersWithUnits) {
    const SpanCase cases[] = {{"30min", 1800},
                              {"1h 30min", 5400},
                              {"90", 90},
                              {"2 days", 172800},
                              {"", std::nullopt},
                              {"min", std::nullopt},
                              {"5 fortnights", std::nullopt},
                              {"99999999999999999999", std::nullopt},
                              {"9999999999 d", std::nullopt}};
    for (const SpanCase& c : cases) EXPECT_EQ(c.seconds, parseTimeSpan(c.text)) << c.text;
}

TEST(ClockTime, HasThreeParts) {
    const SpanCase cases[] = {{"0:10:00", 600},
                              {" 1:00:01 ", 3601},
                              {"10:00", std::nullopt},
                              {"a:b:c", std::nullopt},
                              {"0:99999999999999:0", std::nullopt}};
    for (const SpanCase& c : cases) EXPECT_EQ(c.seconds, parseClockTime(c.text)) << c.text;
}

const std::string kUsers =
    "etc/passwd:\n"
    "\tbob:x:1001:1::/home/bob:/bin/sh\n"
    "\tada:x:1000:1::/home/ada:/bin/sh\n"
    "\tdaemon:x:1:1::/:/bin/sh\n";

TEST(ScreenSaverInfo, ComesByUser) {
    TestMachine machine(
        kUsers +
        "home/bob/.xscreensaver:\n"
        "\ttimeout:\t0:10:00\n\tlock:\tTrue\n\tlockTimeout:\t0:00:05\n\tmode:\trandom\n"
        "home/ada/.config/kscreenlockerrc:\n"
        "\t[Other]\n\tAutolock=true\n\t[Daemon]\n\tAutolock=false\n\tTimeout=5\n\tLockGrace=3\n"
        "etc/systemd/logind.conf:\n\t[Login]\n\t#IdleAction=ignore\n\tIdleAction=lock\n"
        "\tIdleActionSec=30min\n");
    const std::vector<Fields> savers = collectInstances(*machine, "ScreenSaverInfo");
    ASSERT_EQ(3U, savers.size());
    EXPECT_EQ((Fields{{"UserName", "*"},
                      {"Program", "systemd-logind"},
                      {"Enabled", "true"},
                      {"TimeoutSeconds", "1800"},
                      {"LockEnabled", "true"},
                      {"Source", "/etc/systemd/logind.conf"}}),
              savers[0]);
    EXPECT_EQ((Fields{{"UserName", "ada"},
                      {"Program", "KScreenLocker"},
                      {"Enabled", "false"},
                      {"TimeoutSeconds", "300"},
                      {"LockEnabled", "false"},
                      {"LockDelaySeconds", "3"},
                      {"Source", "/home/ada/.config/kscreenlockerrc"}}),
              savers[1]);
    EXPECT_EQ((Fields{{"UserName", "bob"},
                      {"Program", "XScreenSaver"},
                      {"Enabled", "true"},
                      {"TimeoutSeconds", "600"},
                      {"LockEnabled", "true"},
                      {"LockDelaySeconds", "5"},
                      {"Source", "/home/bob/.xscreensaver"}}),
              savers[2]);
}

TEST(ScreenSaverInfo, ComesForEachUserOfAHome) {
    TestMachine machine(
        "etc/passwd:\n\troot:x:0:0::/root:/bin/sh\n\ttoor:x:0:0::/root:/bin/sh\n"
        "root/.xscreensaver: mode: off\n");
    const std::vector<Fields> savers = collectInstances(*machine, "ScreenSaverInfo");
    ASSERT_EQ(2U, savers.size());
    EXPECT_EQ("toor", savers[1].at("UserName"));
}

TEST(ScreenSaverInfo, LeavesHomesOnTheNetworkAlone) {
    TestMachine machine(kUsers +
                        "home/bob/.xscreensaver: mode: off\n"
                        "proc/self/mountinfo:\n\t1 0 8:1 / / rw - ext4 /dev/sda1 rw\n"
                        "\t2 1 0:50 / /home rw - nfs4 server:/home rw\n");
    EXPECT_EQ(0U, collectInstances(*machine, "ScreenSaverInfo").size());
}

}  // namespace
