#include "scanners/shared/packages/dpkg.h"

#include <gtest/gtest.h>

namespace {

constexpr std::string_view kStatus = R"(Package: libexample1
Status: install ok installed
Priority: optional
Section: libs
Installed-Size: 120
Maintainer: A Person <person@example.org>
Architecture: amd64
Multi-Arch: same
Source: example (2:1.4-3)
Version: 2:1.4-3+b1
Description: example library
 It has more lines.

Package: base
Essential: yes
Status: hold ok installed
Architecture: all
Version: 12
Description: base system
)";

TEST(DpkgStatus, EveryFieldOfAPackage) {
    const PackageList list = parseDpkgStatus(kStatus);
    ASSERT_EQ(list.packages.size(), 2U);
    const Package& package = list.packages[0];
    EXPECT_EQ(package.manager, "dpkg");
    EXPECT_EQ(package.name, "libexample1");
    EXPECT_EQ(package.version, "2:1.4-3+b1");
    EXPECT_EQ(package.epoch, "2");
    EXPECT_EQ(package.upstream, "1.4");
    EXPECT_EQ(package.revision, "3+b1");
    EXPECT_EQ(package.architecture, "amd64");
    EXPECT_EQ(package.source, "example");
    EXPECT_EQ(package.section, "libs");
    EXPECT_EQ(package.maintainer, "A Person <person@example.org>");
    EXPECT_EQ(package.summary, "example library");
    EXPECT_EQ(package.installedBytes, 120U * 1024);
    EXPECT_EQ(package.state, PackageState::Installed);
    EXPECT_FALSE(package.essential);
    EXPECT_FALSE(package.held);
}

TEST(DpkgStatus, EssentialAndHeld) {
    const PackageList list = parseDpkgStatus(kStatus);
    ASSERT_EQ(list.packages.size(), 2U);
    EXPECT_TRUE(list.packages[1].essential);
    EXPECT_TRUE(list.packages[1].held);
}

TEST(DpkgStatus, WithoutSourceFieldTheSourceHasThePackagesName) {
    const PackageList list = parseDpkgStatus(kStatus);
    ASSERT_EQ(list.packages.size(), 2U);
    EXPECT_EQ(list.packages[1].source, "base");
}

struct StateCase {
    std::string_view status;
    PackageState state;
    bool present;
};

TEST(DpkgStatus, EveryStateIsKept) {
    const StateCase cases[] = {
        {"purge ok not-installed", PackageState::NotInstalled, false},
        {"deinstall ok config-files", PackageState::ConfigFiles, false},
        {"install reinstreq half-installed", PackageState::HalfInstalled, true},
        {"install ok unpacked", PackageState::Unpacked, true},
        {"install ok half-configured", PackageState::HalfConfigured, true},
        {"install ok triggers-awaited", PackageState::TriggersAwaited, true},
        {"install ok triggers-pending", PackageState::TriggersPending, true},
        {"install ok installed", PackageState::Installed, true},
    };
    for (const StateCase& c : cases) {
        const std::string text = "Package: a\nVersion: 1\nStatus: " + std::string(c.status) + "\n";
        const PackageList list = parseDpkgStatus(text);
        ASSERT_EQ(list.packages.size(), 1U) << c.status;
        EXPECT_EQ(list.packages[0].state, c.state) << c.status;
        EXPECT_EQ(filesArePresent(list.packages[0].state), c.present) << c.status;
    }
}

struct BrokenCase {
    std::string_view what;
    std::string_view text;
    std::size_t packages;
    std::size_t broken;
};

TEST(DpkgStatus, WhatMakesNoSenseIsLeftOutAndCounted) {
    const BrokenCase cases[] = {
        {"nothing", "", 0, 0},
        {"no status", "Package: a\nVersion: 1\n", 0, 1},
        {"no version", "Package: a\nStatus: install ok installed\n", 0, 1},
        {"purged, so there is no version", "Package: a\nStatus: purge ok not-installed\n", 1, 0},
        {"no name", "Version: 1\nStatus: install ok installed\n", 0, 1},
        {"unknown state", "Package: a\nVersion: 1\nStatus: install ok broken\n", 0, 1},
        {"state missing", "Package: a\nVersion: 1\nStatus: install ok\n", 0, 1},
        {"a word too many", "Package: a\nVersion: 1\nStatus: install ok installed x\n", 0, 1},
        {"a line that is no field", "Package: a\nVersion: 1\nStatus: install ok installed\nfoo\n", 0, 1},
        {"cut inside a line", "Package: a\nStatus: install ok installed\nVersion: 1.1", 0, 1},
        {"rubbish spoils only its own paragraph",
         "foo\n\nPackage: a\nStatus: install ok installed\nVersion: 1\n", 1, 1},
        {"rubbish only",
         "\x7F"
         "ELF",
         0, 1},
    };
    for (const BrokenCase& c : cases) {
        const PackageList list = parseDpkgStatus(c.text);
        EXPECT_EQ(list.packages.size(), c.packages) << c.what;
        EXPECT_EQ(list.broken, c.broken) << c.what;
    }
}

TEST(DpkgStatus, TellsWhereTheFirstBrokenParagraphIs) {
    const std::string good = "Package: a\nStatus: install ok installed\nVersion: 1\n";
    const PackageList list = parseDpkgStatus(good + "\nPackage: b\n\nPackage: c\n");
    EXPECT_EQ(list.broken, 2U);
    EXPECT_EQ(list.firstBroken, good.size());
}

TEST(DpkgStatus, ASizeThatDoesNotFitIsUnknown) {
    const std::string head = "Package: a\nStatus: install ok installed\nVersion: 1\nInstalled-Size: ";
    for (const std::string size : {"18014398509481984", "-1", "1 k", ""}) {
        const PackageList list = parseDpkgStatus(head + size + "\n");
        ASSERT_EQ(list.packages.size(), 1U);
        EXPECT_EQ(list.packages[0].installedBytes, std::nullopt) << size;
    }
}

TEST(DpkgControl, WhatIsListedWithoutStatusIsInstalled) {
    const PackageList list = parseDpkgControl("Package: tzdata\nVersion: 2024a-0+deb12u1\nArchitecture: all");
    ASSERT_EQ(list.packages.size(), 1U);
    EXPECT_EQ(list.packages[0].version, "2024a-0+deb12u1");
    EXPECT_EQ(list.packages[0].state, PackageState::Installed);
}

bool isAutomatic(const std::string& architecture) {
    const AutomaticPackages automatic(
        "Package: b\nArchitecture: armhf\nAuto-Installed: 1\n\n"
        "Package: a\nArchitecture: amd64\nAuto-Installed: 0\n\n"
        "Package: a\nArchitecture: i386\nAuto-Installed: 1\n");
    Package package;
    package.name = "a";
    package.architecture = architecture;
    return automatic.contains(package);
}

TEST(AutomaticPackages, ContainTheArchitectureThatSaysOne) {
    EXPECT_TRUE(isAutomatic("i386"));
}

TEST(AutomaticPackages, ContainNoOtherArchitecture) {
    EXPECT_FALSE(isAutomatic("amd64"));
    EXPECT_FALSE(isAutomatic("armhf"));
}

// apt knows them by the machine's own architecture.
TEST(AutomaticPackages, ContainThoseForAllArchitectures) {
    EXPECT_TRUE(isAutomatic("all"));
}

}  // namespace
