#include "scanners/shared/packages/pacman.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(PacmanDesc, EveryFieldOfAPackage) {
    const std::optional<Package> package = parsePacmanDesc(R"(%NAME%
gcc-libs

%VERSION%
1:13.2.1-3

%BASE%
gcc

%DESC%
Runtime libraries shipped by GCC

%ARCH%
x86_64

%INSTALLDATE%
1690000000

%PACKAGER%
Some One <some@one.example>

%SIZE%
142540000

%REASON%
1

%LICENSE%
GPL
LGPL

%DEPENDS%
glibc>=2.27

)");
    ASSERT_TRUE(package);
    EXPECT_EQ(package->manager, "pacman");
    EXPECT_EQ(package->name, "gcc-libs");
    EXPECT_EQ(package->version, "1:13.2.1-3");
    EXPECT_EQ(package->epoch, "1");
    EXPECT_EQ(package->upstream, "13.2.1");
    EXPECT_EQ(package->revision, "3");
    EXPECT_EQ(package->source, "gcc");
    EXPECT_EQ(package->summary, "Runtime libraries shipped by GCC");
    EXPECT_EQ(package->architecture, "x86_64");
    EXPECT_EQ(package->installTime, 1690000000);
    EXPECT_EQ(package->maintainer, "Some One <some@one.example>");
    EXPECT_EQ(package->installedBytes, 142540000U);
    EXPECT_TRUE(package->automatic);
    EXPECT_EQ(package->license, "GPL; LGPL");
}

TEST(PacmanDesc, WithoutNameOrVersionThereIsNoPackage) {
    EXPECT_FALSE(parsePacmanDesc(""));
    EXPECT_FALSE(parsePacmanDesc("%NAME%\na\n"));
    EXPECT_FALSE(parsePacmanDesc("%VERSION%\n1\n"));
    EXPECT_FALSE(parsePacmanDesc("%NAME%\n\n%VERSION%\n1\n"));
}

// A value may look like a heading: only the line after an empty one is one.
TEST(PacmanDesc, HeadingsStandAfterEmptyLines) {
    const std::optional<Package> package =
        parsePacmanDesc("%NAME%\na\n\n%VERSION%\n1\n\n%DESC%\n%VERSION%\n");
    ASSERT_TRUE(package);
    EXPECT_EQ(package->version, "1");
    EXPECT_EQ(package->summary, "%VERSION%");
}

TEST(PacmanFiles, PathsWithoutDirectories) {
    std::vector<std::string> owned;
    forEachPacmanPath("%FILES%\nusr/\nusr/bin/\nusr/bin/a\nusr/lib/liba.so\n\n%BACKUP%\netc/a.conf\tabc\n",
                      [&](std::string_view path) { owned.emplace_back(path); });
    EXPECT_EQ(owned, (std::vector<std::string>{"usr/bin/a", "usr/lib/liba.so"}));
}

}  // namespace
