#include "scanners/shared/packages/snap.h"

#include <gtest/gtest.h>

namespace {

TEST(SnapYaml, FieldsOfAPackage) {
    const Package package = parseSnapYaml(
        "name: lxd\nversion: \"5.0\"\nsummary: LXD - container manager\nlicense: AGPL-3.0\n"
        "description: |\n  version: 9\napps:\n  lxc:\n    version: 8\n");
    EXPECT_EQ(package.name, "lxd");
    EXPECT_EQ(package.version, "5.0");
    EXPECT_EQ(package.summary, "LXD - container manager");
    EXPECT_EQ(package.license, "AGPL-3.0");
}

TEST(SnapYaml, WithoutVersionItIsEmpty) {
    EXPECT_EQ(parseSnapYaml("name: a\n").version, "");
    EXPECT_EQ(parseSnapYaml("").name, "");
    EXPECT_EQ(parseSnapYaml("version: '").version, "'");
}

}  // namespace
