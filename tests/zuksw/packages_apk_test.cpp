#include "scanners/shared/packages/apk.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr std::string_view kInstalled = R"(C:Q1p78yvTLG094tHE1+dToJGbmYzQE=
P:musl
V:1.2.4-r2
A:x86_64
S:383152
I:622592
T:the musl c library (libc) implementation
U:https://musl.libc.org/
L:MIT
o:musl
m:Some One <some@one.example>
t:1692194612
F:lib
R:ld-musl-x86_64.so.1
a:0:0:755
R:libc.musl-x86_64.so.1
F:
R:top

P:busybox-binsh
V:1.36.1-r5
o:busybox
F:bin
R:sh

)";

TEST(ApkInstalled, EveryFieldOfAPackage) {
    const PackageList list = parseApkInstalled(kInstalled);
    ASSERT_EQ(list.packages.size(), 2U);
    EXPECT_EQ(list.broken, 0U);
    const Package& package = list.packages[0];
    EXPECT_EQ(package.manager, "apk");
    EXPECT_EQ(package.name, "musl");
    EXPECT_EQ(package.version, "1.2.4-r2");
    EXPECT_EQ(package.upstream, "1.2.4");
    EXPECT_EQ(package.revision, "r2");
    EXPECT_EQ(package.architecture, "x86_64");
    EXPECT_EQ(package.installedBytes, 622592U);
    EXPECT_EQ(package.summary, "the musl c library (libc) implementation");
    EXPECT_EQ(package.license, "MIT");
    EXPECT_EQ(package.maintainer, "Some One <some@one.example>");
    EXPECT_EQ(list.packages[1].source, "busybox");
}

TEST(ApkInstalled, OwnedPathsWithTheirPackage) {
    std::vector<std::string> owned;
    forEachApkPath(kInstalled, [&](const std::string& path, std::string_view package) {
        owned.push_back(path + " " + std::string(package));
    });
    const std::vector<std::string> expected = {
        "lib/ld-musl-x86_64.so.1 musl", "lib/libc.musl-x86_64.so.1 musl", "top musl", "bin/sh busybox-binsh"};
    EXPECT_EQ(owned, expected);
}

struct BrokenCase {
    std::string_view what;
    std::string_view text;
    std::size_t packages;
    std::size_t broken;
};

TEST(ApkInstalled, WhatMakesNoSenseIsLeftOutAndCounted) {
    const BrokenCase cases[] = {
        {"nothing", "", 0, 0},
        {"empty lines only", "\n\n\n", 0, 0},
        {"no version", "P:a\n\n", 0, 1},
        {"no name", "V:1\n\n", 0, 1},
        {"a line without a letter", "P:a\nV:1\nfoo\n\n", 0, 1},
        {"cut inside a line", "P:a\nV:1.1", 0, 1},
        {"rubbish spoils only its own paragraph", "foo\n\nP:a\nV:1\n", 1, 1},
    };
    for (const BrokenCase& c : cases) {
        const PackageList list = parseApkInstalled(c.text);
        EXPECT_EQ(list.packages.size(), c.packages) << c.what;
        EXPECT_EQ(list.broken, c.broken) << c.what;
    }
}

}  // namespace
