#include "scanners/shared/packages/opkg.h"

#include <gtest/gtest.h>

namespace {

TEST(OpkgStatus, FieldsOfItsOwn) {
    const PackageList list = parseOpkgStatus(
        "Package: busybox\nVersion: 1.35.0-5\nDepends: libc\nStatus: install hold,user installed\n"
        "Architecture: mips_24kc\nInstalled-Size: 220000\nInstalled-Time: 1661951244\nAuto-Installed: yes\n\n"
        "Package: dnsmasq\nVersion: 2.86-14\nStatus: install user installed\nArchitecture: mips_24kc\n\n");
    ASSERT_EQ(list.packages.size(), 2U);
    const Package& package = list.packages[0];
    EXPECT_EQ(package.manager, "opkg");
    EXPECT_EQ(package.name, "busybox");
    EXPECT_EQ(package.revision, "5");
    EXPECT_EQ(package.installTime, 1661951244);
    EXPECT_TRUE(package.automatic);
    EXPECT_TRUE(package.held);
    EXPECT_EQ(package.installedBytes, std::nullopt);
    EXPECT_FALSE(list.packages[1].held);
    EXPECT_FALSE(list.packages[1].automatic);
}

}  // namespace
