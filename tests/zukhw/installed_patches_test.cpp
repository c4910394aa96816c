// The logs of package updates, and the group InstalledPatches.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scanners/zukhw/update_logs.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::ElementsAre;
using testing::FieldsAre;

const std::string kApt =
    "\n"
    "Start-Date: 2026-05-20  10:11:12\n"
    "Requested-By: ada (1000)\n"
    "Install: new:amd64 (1, automatic)\n"
    "Upgrade: libc6:amd64 (2.36-9, 2.36-10), zlib1g:amd64 (1:1.2, 1:1.3)\n"
    "End-Date: 2026-05-20  10:11:15\n"
    "\n"
    "Start-Date: 2026-05-21  10:11:12\n"
    "Upgrade: libc6:amd64 (2.36-10, 2.36-11)\n";

TEST(AptHistory, TellsUpgradesWithTheirDateAndUser) {
    EXPECT_THAT(parseAptHistory(kApt),
                ElementsAre(FieldsAre("libc6", "amd64", "2.36-9", "2.36-10", "2026-05-20", "ada"),
                            FieldsAre("zlib1g", "amd64", "1:1.2", "1:1.3", "2026-05-20", "ada"),
                            FieldsAre("libc6", "amd64", "2.36-10", "2.36-11", "2026-05-21", "")));
}

TEST(AptHistory, IsReadWithoutHarmWhereverItIsCut) {
    for (std::size_t size = 0; size <= kApt.size(); ++size) {
        for (const PackageUpdate& update : parseAptHistory(std::string_view(kApt).substr(0, size))) {
            EXPECT_NE("", update.name);
        }
    }
}

TEST(DpkgLog, TellsUpgrades) {
    EXPECT_THAT(parseDpkgLog("2026-05-20 10:11:12 install new:amd64 <none> 1\n"
                             "2026-05-20 10:11:12 upgrade libc6:amd64 2.36-9 2.36-10\n"
                             "2026-05-20 10:11:12 status upgrade libc6:amd64 2.36-10\n"),
                ElementsAre(FieldsAre("libc6", "amd64", "2.36-9", "2.36-10", "2026-05-20", "")));
}

TEST(DnfLog, PutsTheOldVersionToTheNew) {
    EXPECT_THAT(
        parseDnfLog("2026-05-20T10:11:12+0000 SUBDEBUG Upgrade: python3-libs-3.9.7-1.fc34.x86_64\n"
                    "2026-05-20T10:11:13+0000 SUBDEBUG Installed: new-1-1.noarch\n"
                    "2026-05-20T10:11:14+0000 SUBDEBUG Upgraded: python3-libs-3.9.6-2.fc34.x86_64\n"
                    "2026-05-20T10:11:14+0000 SUBDEBUG Upgrade: nonsense\n"),
        ElementsAre(FieldsAre("python3-libs", "x86_64", "3.9.6-2.fc34", "3.9.7-1.fc34", "2026-05-20", "")));
}

TEST(InstalledPatches, ComeByKind) {
    TestMachine machine(
        "sys/kernel/livepatch/fix_1/enabled: 1\n"
        "sys/kernel/livepatch/fix_1/transition: 0\n"
        "proc/cpuinfo:\n\tprocessor : 0\n\tmicrocode : 0xd6\n"
        "var/log/dpkg.log: 2026-05-20 10:11:12 upgrade libc6:amd64 2.36-9 2.36-10\n");
    const std::vector<Fields> patches = collectInstances(*machine, "InstalledPatches");
    ASSERT_EQ(3U, patches.size());
    EXPECT_EQ(
        (Fields{{"Kind", "LivePatch"}, {"Name", "fix_1"}, {"Enabled", "true"}, {"Transition", "false"}}),
        patches[0]);
    EXPECT_EQ((Fields{{"Kind", "Microcode"}, {"Name", "microcode"}, {"ToVersion", "0xd6"}}), patches[1]);
    EXPECT_EQ((Fields{{"Kind", "Update"},
                      {"Name", "libc6"},
                      {"Architecture", "amd64"},
                      {"FromVersion", "2.36-9"},
                      {"ToVersion", "2.36-10"},
                      {"InstallDate", "2026-05-20"}}),
              patches[2]);
}

TEST(InstalledPatches, AreTheNewestThousandUpdates) {
    std::string log;
    for (int i = 0; i < 1200; ++i) {
        log += std::string("\t20") + (i < 200 ? "20" : "21") + "-01-01 00:00:00 upgrade p" +
               std::to_string(i) + ":all 1 2\n";
    }
    TestMachine machine("var/log/dpkg.log:\n" + log);
    const std::vector<Fields> patches = collectInstances(*machine, "InstalledPatches");
    ASSERT_EQ(1000U, patches.size());
    EXPECT_EQ("p200", patches[0].at("Name"));
}

}  // namespace
