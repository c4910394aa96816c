// The groups DiskPartition and Partition.
#include <gtest/gtest.h>

#include "scanners/zukhw/partition_types.h"
#include "tests/zukhw/test_machine.h"

namespace {

const std::string kDisk =
    "sys/devices/a/block/sda/size: 4000\n"
    "sys/devices/a/block/sda/dev: 8:0\n"
    "sys/devices/a/block/sda/sda1/partition: 1\n"
    "sys/devices/a/block/sda/sda1/start: 2048\n"
    "sys/devices/a/block/sda/sda1/size: 1000\n"
    "sys/devices/a/block/sda/sda1/ro: 0\n"
    "sys/devices/a/block/sda/sda1/dev: 8:1\n"
    "sys/devices/a/block/sda/sda1/uevent:\n\tPARTN=1\n\tPARTNAME=EFI part\n\tPARTUUID=ABCD-01\n"
    "sys/devices/a/block/sda/sda10/partition: 10\n"
    "sys/devices/a/block/sda/sda10/size: 8\n"
    "sys/devices/a/block/sda/sda10/dev: 8:10\n"
    "sys/class/block/sda -> ../../devices/a/block/sda\n"
    "sys/class/block/sda10 -> ../../devices/a/block/sda/sda10\n"
    "sys/class/block/sda1 -> ../../devices/a/block/sda/sda1\n";

TEST(DiskPartition, IsDescribedByKernelAndUdev) {
    TestMachine machine(kDisk +
                        "proc/self/mountinfo:\n\t1 0 8:1 / /boot rw - vfat /dev/sda1 rw\n"
                        "\t2 0 8:1 /x /again rw - vfat /dev/sda1 rw\n"
                        "proc/swaps:\n\tFilename Type\n\t/dev/sda10 partition 4 0 -2\n"
                        "run/udev/data/b8:1:\n"
                        "\tE:ID_PART_ENTRY_SCHEME=gpt\n"
                        "\tE:ID_PART_ENTRY_TYPE=c12a7328-f81f-11d2-ba4b-00a0c93ec93b\n"
                        "\tE:ID_PART_ENTRY_FLAGS=0x4\n"
                        "\tE:ID_FS_TYPE=vfat\n\tE:ID_FS_LABEL_ENC=my\\x20efi\n\tE:ID_FS_UUID=12-34\n");
    const std::vector<Fields> partitions = collectInstances(*machine, "DiskPartition");
    ASSERT_EQ(2U, partitions.size());
    EXPECT_EQ((Fields{{"DeviceName", "sda1"},
                      {"Disk", "sda"},
                      {"Number", "1"},
                      {"StartBytes", "1048576"},
                      {"SizeBytes", "512000"},
                      {"ReadOnly", "false"},
                      {"Scheme", "gpt"},
                      {"TypeId", "c12a7328-f81f-11d2-ba4b-00a0c93ec93b"},
                      {"TypeName", "EFI system"},
                      {"PartitionUuid", "abcd-01"},
                      {"PartitionLabel", "EFI part"},
                      {"Bootable", "true"},
                      {"FileSystem", "vfat"},
                      {"Label", "my efi"},
                      {"Uuid", "12-34"},
                      {"MountPoint", "/boot"}}),
              partitions[0]);
    EXPECT_EQ("sda10", partitions[1].at("DeviceName"));
    EXPECT_EQ("[SWAP]", partitions[1].at("MountPoint"));
}

TEST(DiskPartition, OfAMasterBootRecordHasATypeOfTwoDigits) {
    TestMachine machine(kDisk +
                        "run/udev/data/b8:1:\n\tE:ID_PART_ENTRY_SCHEME=dos\n\tE:ID_PART_ENTRY_TYPE=0xb\n"
                        "run/udev/data/b8:10:\n\tE:ID_PART_ENTRY_SCHEME=dos\n\tE:ID_PART_ENTRY_TYPE=0x83\n"
                        "\tE:ID_PART_ENTRY_FLAGS=0x80\n");
    const std::vector<Fields> partitions = collectInstances(*machine, "DiskPartition");
    EXPECT_EQ("0b", partitions.at(0).at("TypeId"));
    EXPECT_EQ("FAT32", partitions.at(0).at("TypeName"));
    EXPECT_EQ("false", partitions.at(0).at("Bootable"));
    EXPECT_EQ("83", partitions.at(1).at("TypeId"));
    EXPECT_EQ("true", partitions.at(1).at("Bootable"));
}

TEST(PartitionTypes, HaveNoNameForTheUnknown) {
    EXPECT_EQ("", partitionTypeName(""));
    EXPECT_EQ("", partitionTypeName("99"));
}

TEST(Partition, IsEverythingThatCanCarryData) {
    TestMachine machine(kDisk +
                        "sys/devices/virtual/block/loop0/size: 8\n"
                        "sys/devices/virtual/block/loop0/loop/backing_file: /img\n"
                        "sys/devices/virtual/block/loop1/size: 8\n"
                        "sys/devices/virtual/block/dm-0/size: 16\n"
                        "sys/devices/virtual/block/dm-0/ro: 1\n"
                        "sys/devices/virtual/block/dm-0/dev: 253:0\n"
                        "sys/devices/virtual/block/dm-0/dm/name: my--vg-home--2\n"
                        "sys/devices/virtual/block/dm-0/dm/uuid: LVM-abc\n"
                        "sys/devices/virtual/block/dm-0/slaves/sda1 -> ../../../a/block/sda/sda1\n"
                        "sys/devices/virtual/block/dm-1/size: 16\n"
                        "sys/devices/virtual/block/dm-1/dm/name: secret\n"
                        "sys/devices/virtual/block/dm-1/dm/uuid: CRYPT-LUKS2-1234-secret\n"
                        "sys/devices/virtual/block/md0/size: 16\n"
                        "sys/devices/virtual/block/md0/md/level: raid1\n"
                        "sys/devices/virtual/block/md0/md/raid_disks: 2\n"
                        "sys/devices/virtual/block/md0/md/array_state: clean\n"
                        "sys/class/block/loop0 -> ../../devices/virtual/block/loop0\n"
                        "sys/class/block/loop1 -> ../../devices/virtual/block/loop1\n"
                        "sys/class/block/dm-0 -> ../../devices/virtual/block/dm-0\n"
                        "sys/class/block/dm-1 -> ../../devices/virtual/block/dm-1\n"
                        "sys/class/block/md0 -> ../../devices/virtual/block/md0\n"
                        "proc/self/mountinfo:\n\t1 0 253:0 / /home rw - ext4 /dev/mapper/x rw\n");
    const std::vector<Fields> volumes = collectInstances(*machine, "Partition");
    ASSERT_EQ(6U, volumes.size());
    EXPECT_EQ((Fields{{"DeviceName", "dm-0"},
                      {"Name", "my--vg-home--2"},
                      {"Kind", "Lvm"},
                      {"SizeBytes", "8192"},
                      {"ReadOnly", "true"},
                      {"FileSystem", "ext4"},
                      {"Parents", "sda1"},
                      {"MountPoints", "/home"},
                      {"Swap", "false"},
                      {"VolumeGroup", "my-vg"},
                      {"LogicalVolume", "home-2"},
                      {"Encrypted", "false"}}),
              volumes[0]);
    EXPECT_EQ("true", volumes[1].at("Encrypted"));
    EXPECT_EQ("LUKS2", volumes[1].at("CipherKind"));
    EXPECT_EQ("/img", volumes[2].at("BackingFile"));
    EXPECT_EQ((Fields{{"DeviceName", "md0"},
                      {"Kind", "Raid"},
                      {"SizeBytes", "8192"},
                      {"Swap", "false"},
                      {"RaidLevel", "raid1"},
                      {"RaidDevices", "2"},
                      {"RaidState", "clean"},
                      {"Encrypted", "false"}}),
              volumes[3]);
    EXPECT_EQ("sda", volumes[4].at("Parents"));
}

TEST(Partition, OfBtrfsIsMountedUnderAnotherNumber) {
    TestMachine machine(
        "sys/class/block/sdb/dev: 8:16\nsys/class/block/sdb/size: 8\n"
        "sys/class/block/sdc/dev: 8:32\nsys/class/block/sdc/size: 8\n"
        "proc/self/mountinfo:\n\t1 0 0:27 /@ / rw - btrfs /dev/sdb rw\n\t2 0 0:27 /@home /home rw - btrfs "
        "/dev/sdb rw\n");
    const std::vector<Fields> volumes = collectInstances(*machine, "Partition");
    ASSERT_EQ(2U, volumes.size());
    EXPECT_EQ("btrfs", volumes[0].at("FileSystem"));
    EXPECT_EQ("/; /home", volumes[0].at("MountPoints"));
    EXPECT_EQ(0U, volumes[1].count("MountPoints"));
}

TEST(Partition, IsFoundWithoutTheClassOfBlockDevices) {
    TestMachine machine(
        "sys/block/sda/sda1/partition: 1\nsys/block/sda/sda1/size: 8\nsys/block/sda/size: 16\n"
        "sys/dev/block/8:1 -> ../../block/sda/sda1\n");
    EXPECT_EQ("sda1", collectOne(machine, "Partition").at("DeviceName"));
}

}  // namespace
