// Mounts, the layers of block devices below them, and the group LogicalDrive made of both.
#include <gtest/gtest.h>

#include "scanners/zukhw/block_devices.h"
#include "scanners/zukhw/mountinfo.h"
#include "scanners/zukhw/udev_database.h"
#include "tests/zukhw/test_machine.h"

namespace {

TEST(Mountinfo, DecodesBlanksAndSkipsOptionalFields) {
    SourceLog log;
    const std::vector<Mount> mounts = parseMountinfo(
        "36 35 98:0 /a\\040b /mnt\\011x rw,noatime master:1 shared:2 - ext3 /dev/my\\134disk rw,x=1\n", &log);
    ASSERT_EQ(1U, mounts.size());
    EXPECT_EQ("98:0", mounts[0].device);
    EXPECT_EQ("/a b", mounts[0].root);
    EXPECT_EQ("/mnt\tx", mounts[0].point);
    EXPECT_EQ("rw,noatime", mounts[0].options);
    EXPECT_EQ("ext3", mounts[0].type);
    EXPECT_EQ("/dev/my\\disk", mounts[0].source);
    EXPECT_EQ("rw,x=1", mounts[0].superOptions);
}

TEST(Mountinfo, CountsBrokenLinesWithTheirPlace) {
    const char* lines[] = {"",
                           "1 2 3",
                           "1 2 8:1 / / rw",
                           "1 2 8:1 / / rw -",
                           "1 2 8:1 / / rw - ext4 x",
                           "1 2 nonsense / / rw - ext4 x rw",
                           "1 2 8:1 / / rw -  x rw",
                           "1 2 8:1 / relative rw - ext4 x rw"};
    for (const char* line : lines) {
        SourceLog log;
        EXPECT_EQ(1U, parseMountinfo(std::string(line) + "\n1 2 8:1 / / rw - ext4 x rw\n", &log).size())
            << line;
        EXPECT_EQ((std::vector<std::string>{"/proc/self/mountinfo@0"}), log.malformedItems()) << line;
    }
}

const std::string kStack =
    "sys/devices/a/block/sda/sda2/partition: 2\n"
    "sys/devices/a/block/sda/sda2/dev: 8:2\n"
    "sys/devices/a/block/sda/removable: 0\n"
    "sys/devices/b/block/sdb/size: 8\n"
    "sys/devices/virtual/block/dm-0/slaves/sda2 -> ../../../../a/block/sda/sda2\n"
    "sys/devices/virtual/block/dm-0/slaves/sdb -> ../../../../b/block/sdb\n"
    "sys/devices/virtual/block/dm-0/dm/uuid: CRYPT-LUKS2-1234\n"
    "sys/devices/virtual/block/dm-0/dm/name: secret\n"
    "sys/devices/virtual/block/dm-1/slaves/dm-0 -> ../../dm-0\n"
    "sys/devices/virtual/block/dm-1/dm/uuid: LVM-x\n"
    "sys/devices/virtual/block/dm-1/dm/name: vg-root\n"
    "sys/block/sda -> ../devices/a/block/sda\n"
    "sys/block/sdb -> ../devices/b/block/sdb\n"
    "sys/block/dm-0 -> ../devices/virtual/block/dm-0\n"
    "sys/block/dm-1 -> ../devices/virtual/block/dm-1\n"
    "sys/dev/block/253:1 -> ../../devices/virtual/block/dm-1\n";

TEST(BlockDevices, AreFollowedDownToTheDisks) {
    TestMachine machine(kStack);
    EXPECT_EQ("dm-1", blockNameOf(*machine, "253:1"));
    EXPECT_EQ((std::vector<std::string>{"sda", "sdb"}), disksBelow(*machine, "dm-1"));
    EXPECT_EQ((std::vector<std::string>{"sdb"}), disksBelow(*machine, "sdb"));
    EXPECT_TRUE(isEncrypted(*machine, "dm-1"));
    EXPECT_FALSE(isEncrypted(*machine, "sda2"));
}

TEST(BlockDevices, AreFoundByTheNamesOfTheirNodes) {
    TestMachine machine(kStack);
    EXPECT_EQ("dm-1", blockNameOfNode(*machine, "/dev/mapper/vg-root"));
    EXPECT_EQ("sda2", blockNameOfNode(*machine, "/dev/sda2"));
    EXPECT_EQ("", blockNameOfNode(*machine, "/dev/sdz"));
    EXPECT_EQ("", blockNameOfNode(*machine, "server:/share"));
    EXPECT_EQ("", blockNameOfNode(*machine, "/dev/.."));
}

TEST(BlockDevices, InACircleAreEachTakenOnce) {
    TestMachine machine("sys/block/dm-0/slaves/dm-1/x: 1\nsys/block/dm-1/slaves/dm-0/x: 1\n");
    EXPECT_EQ((std::vector<std::string>{"dm-0", "dm-1"}), blockLayers(*machine, "dm-0"));
}

TEST(UdevEscapes, AreDecodedWhereTheyAreWhole) {
    EXPECT_EQ("my disk", decodeUdevEscapes("my\\x20disk"));
    EXPECT_EQ("\\x2", decodeUdevEscapes("\\x2"));
    EXPECT_EQ("\\xzz", decodeUdevEscapes("\\xzz"));
}

std::string mounts(const std::vector<std::string>& lines) {
    std::string tree = "proc/self/mountinfo:\n";
    for (const std::string& line : lines) tree += "\t" + line + "\n";
    return tree;
}

TEST(LogicalDrive, DescribesAnEncryptedVolume) {
    TestMachine machine(kStack +
                        mounts({"27 1 253:1 /sub / rw,relatime - ext4 /dev/mapper/vg-root rw,discard"}) +
                        "run/udev/data/b253:1:\n\tE:ID_FS_UUID=u-1\n\tE:ID_FS_LABEL_ENC=my\\x20root\n");
    EXPECT_EQ((Fields{{"MountPoint", "/"},
                      {"Device", "/dev/mapper/vg-root"},
                      {"FileSystem", "ext4"},
                      {"Label", "my root"},
                      {"Uuid", "u-1"},
                      {"Kind", "Local"},
                      {"ReadOnly", "false"},
                      {"Options", "discard; relatime; rw"},
                      {"System", "true"},
                      {"Disks", "sda; sdb"},
                      {"Encrypted", "true"},
                      {"Subvolume", "/sub"}}),
              collectOne(machine, "LogicalDrive"));
}

struct ListedCase {
    const char* line;
    bool listed;
};

TEST(LogicalDrive, IsWhatStoresData) {
    const ListedCase cases[] = {
        {"1 0 8:1 / /mnt rw - ext4 /dev/sda1 rw", true},
        {"1 0 0:5 / /proc rw - proc proc rw", false},
        {"1 0 0:5 / /mnt rw - madeup x rw", false},  // nodev in /proc/filesystems
        {"1 0 0:5 / /mnt rw - nfs4 server:/x rw", true},
        {"1 0 0:5 / /proc/fs/nfsd rw - nfsd nfsd rw", false},
        {"1 0 0:5 / /mnt rw - fuse.sshfs x rw", false},
        {"1 0 0:5 / /mnt rw - fuse.glusterfs server:/v rw", true},
        {"1 0 8:1 / /mnt rw - fuseblk /dev/sda1 rw", true},
        {"1 0 0:5 / /mnt rw - zfs pool/home rw", true},
        {"1 0 0:5 / /tmp rw - tmpfs tmpfs rw,size=4k", true},
        {"1 0 0:5 / /tmp rw - tmpfs tmpfs rw", false},
        {"1 0 0:5 / / rw - overlay overlay rw", true},
        {"1 0 0:5 / /var/lib/docker/x rw - overlay overlay rw", false},
    };
    for (const ListedCase& c : cases) {
        TestMachine machine(mounts({c.line}) +
                            "proc/filesystems:\n\tnodev\tmadeup\n\text4\n\tnodev\tzfs\n\tnodev\ttmpfs\n");
        EXPECT_EQ(c.listed ? 1U : 0U, collectInstances(*machine, "LogicalDrive").size()) << c.line;
    }
}

TEST(LogicalDrive, IsReportedOnceHoweverOftenItIsMounted) {
    TestMachine machine(
        mounts({"1 0 8:1 / / rw - ext4 /dev/sda1 rw", "2 1 8:1 / /again rw - ext4 /dev/sda1 rw",
                "3 1 8:1 /sub /part rw - ext4 /dev/sda1 rw"}));
    const std::vector<Fields> drives = collectInstances(*machine, "LogicalDrive");
    ASSERT_EQ(2U, drives.size());
    EXPECT_EQ("/", drives[0].at("MountPoint"));
    EXPECT_EQ("/part", drives[1].at("MountPoint"));
    EXPECT_EQ("/sub", drives[1].at("Subvolume"));
}

TEST(LogicalDrive, ThatIsCoveredByAnotherIsLeftOut) {
    TestMachine machine(
        mounts({"1 0 8:1 / /mnt rw - ext4 /dev/sda1 rw", "2 1 8:2 / /mnt rw - xfs /dev/sda2 rw"}));
    EXPECT_EQ("xfs", collectOne(machine, "LogicalDrive").at("FileSystem"));
}

TEST(LogicalDrive, ThatIsCoveredAtOnePlaceIsFoundAtAnother) {
    TestMachine machine(
        mounts({"1 0 8:1 / /covered rw - ext4 /dev/sda1 rw", "2 0 8:1 / /seen rw - ext4 /dev/sda1 rw",
                "3 0 0:9 / /covered rw - autofs systemd-1 rw"}));
    EXPECT_EQ("/seen", collectOne(machine, "LogicalDrive").at("MountPoint"));
}

struct ServerCase {
    const char* type;
    const char* source;
    const char* server;
    const char* share;
};

TEST(LogicalDrive, TellsServerAndShare) {
    const ServerCase cases[] = {
        {"nfs4", "nas:/export/home", "nas", "/export/home"},
        {"nfs4", "[fe80::1]:/x", "fe80::1", "/x"},
        {"cifs", "//nas/data/sub", "nas", "data/sub"},
        {"fuse.glusterfs", "nas:volume", "nas", "volume"},
        {"fuse.glusterfs", "nas:/volume/sub", "nas", "/volume/sub"},
    };
    for (const ServerCase& c : cases) {
        TestMachine machine(mounts({std::string("1 0 0:50 / /mnt ro - ") + c.type + ' ' + c.source + " ro"}));
        const Fields drive = collectOne(machine, "LogicalDrive");
        EXPECT_EQ("Network", drive.at("Kind"));
        EXPECT_EQ(c.server, drive.at("Server")) << c.source;
        EXPECT_EQ(c.share, drive.at("Share")) << c.source;
        EXPECT_EQ("true", drive.at("ReadOnly"));
    }
}

TEST(LogicalDrive, OfBtrfsLiesOnAllItsDevices) {
    TestMachine machine(kStack + mounts({"1 0 0:40 /@ / rw - btrfs /dev/sda2 rw"}) +
                        "run/udev/data/b8:2:\n\tE:ID_FS_UUID=u-2\n"
                        "sys/fs/btrfs/u-2/devices/sda2/size: 1\nsys/fs/btrfs/u-2/devices/sdb/size: 1\n");
    const Fields drive = collectOne(machine, "LogicalDrive");
    EXPECT_EQ("sda; sdb", drive.at("Disks"));
    EXPECT_EQ("u-2", drive.at("Uuid"));
    EXPECT_EQ("/@", drive.at("Subvolume"));
}

}  // namespace
