#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scanners/zukhw/block_interface.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;

// A disk where sysfs has it, with a link from /sys/block, and more files of it.
std::string disk(const std::string& name, const std::string& parent, const std::vector<std::string>& files) {
    const std::string path = "sys/devices/" + parent + "/block/" + name;
    std::string tree = "sys/block/" + name + " -> ../" + path.substr(4) + '\n';
    tree += path + "/device -> ../..\n" + path + "/size: 2048\n";
    for (const std::string& file : files) tree += path + '/' + file + '\n';
    return tree;
}

TEST(Storage, ReportsDrivesAndNotWhatIsMadeOfThem) {
    TestMachine machine(disk("sda", "x", {}) + disk("sdb10", "y", {}) + disk("sdb2", "z", {}) +
                        disk("loop0", "virtual/a", {}) + disk("ram0", "virtual/b", {}) +
                        disk("zram0", "virtual/c", {}) + disk("dm-0", "virtual/d", {}) +
                        disk("md127", "virtual/e", {}) + disk("nbd0", "virtual/f", {}) +
                        disk("nvme0c0n1", "h", {"hidden: 1"}));
    const std::vector<Fields> disks = collectInstances(*machine, "Storage");
    ASSERT_EQ(3U, disks.size());
    EXPECT_EQ("sda", disks[0].at("DeviceName"));
    EXPECT_EQ("sdb2", disks[1].at("DeviceName"));
    EXPECT_EQ("sdb10", disks[2].at("DeviceName"));
}

TEST(Storage, ReportsAnEmptyDriveWithoutASize) {
    TestMachine machine(
        "sys/block/sr0/size: 0\nsys/block/sr0/removable: 1\nsys/block/sdx/size: 0\n"
        "sys/block/sdx/removable: 0\n");
    const Fields drive = collectOne(machine, "Storage");
    EXPECT_EQ("Optical", drive.at("Kind"));
    EXPECT_EQ("Optical", drive.at("MediaType"));
    EXPECT_EQ(0U, drive.count("SizeBytes"));
}

struct InterfaceCase {
    const char* path;
    const char* interface;
};

TEST(Storage, TellsWhatADiskHangsOn) {
    const std::string pci = "sys/devices/pci0000:00/0000:00:1f.2/";
    const InterfaceCase cases[] = {
        {"ata1/host0/target0:0:0/0:0:0:0/block/sda", "SATA"},
        {"virtio1/block/vda", "Virtio"},
        {"virtio2/host0/target0:0:0/0:0:0:0/block/sda", "Virtio"},
        {"nvme/nvme0/nvme0n1", "NVMe"},
        {"usb1/1-1/1-1:1.0/host6/target6:0:0/6:0:0:0/block/sdb", "USB"},
        {"host0/port-0:0/expander-0:0/port-0:0:1/end_device-0:0:1/target0:0:1/0:0:1:0/block/sdc", "SAS"},
        {"host7/rport-7:0-2/target7:0:2/7:0:2:0/block/sdd", "FibreChannel"},
        {"host8/session3/target8:0:0/8:0:0:1/block/sde", "iSCSI"},
        {"vbd-51712/block/xvda", "Xen"},
        {"VMBUS:01/00000000-0000-8899-0000-000000000000/host0/target0:0:0/0:0:0:0/block/sda", "HyperV"},
        {"MSFT1000:00/00000000-0000-8899-0000-000000000000/host0/target0:0:0/0:0:0:0/block/sda", "HyperV"},
        {"1d84000.ufshc/host0/target0:0:0/0:0:0:0/block/sda", "UFS"},
        {"mmc0/mmc0:0001/block/mmcblk0", "MMC"},
        {"css0/0.0.0001/0.0.1234/block/dasda", "DASD"},
        {"host2/target2:0:0/2:0:0:0/block/sdf", "SCSI"},
        {"host3/target3:2:0/3:2:0:0/block/sdg", "RAID"},
        {"platform/floppy.0/block/fd0", ""},
    };
    TestMachine machine("sys/class/scsi_host/host3/proc_name: megaraid_sas\n");
    for (const InterfaceCase& c : cases)
        EXPECT_EQ(c.interface, blockInterface(*machine, pci + c.path)) << c.path;
}

TEST(Storage, DescribesASataDisk) {
    TestMachine machine(
        disk("sda", "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0",
             {"queue/rotational: 1", "queue/logical_block_size: 512", "removable: 0", "ro: 0",
              "sda1/partition: 1", "sda2/partition: 2", "dev: 8:0"}) +
        "sys/devices/pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/vendor: ATA     \n"
        "sys/devices/pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/model: WDC WD800JD-00MS\n"
        "sys/devices/pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/rev: 1E01\n"
        "sys/devices/pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/vpd_pg80 = 00 80 00 04 20 41 42 "
        "20\n"
        "run/udev/data/b8:0:\n\tE:ID_PART_TABLE_TYPE=gpt\n\tE:ID_SERIAL_SHORT=other\n");
    Fields fields = collectOne(machine, "Storage");
    EXPECT_EQ((Fields{{"DeviceName", "sda"},
                      {"Kind", "Disk"},
                      {"Model", "WDC WD800JD-00MS"},
                      {"SerialNumber", "AB"},
                      {"FirmwareRevision", "1E01"},
                      {"SizeBytes", "1048576"},
                      {"LogicalBlockBytes", "512"},
                      {"MediaType", "HDD"},
                      {"Interface", "SATA"},
                      {"BusAddress", "0:0:0:0"},
                      {"ControllerAddress", "0000:00:17.0"},
                      {"Removable", "false"},
                      {"ReadOnly", "false"},
                      {"Multipath", "false"},
                      {"PartitionTable", "gpt"},
                      {"PartitionCount", "2"}}),
              fields);
}

// 60 bytes of the translation, then words: the serial number from the tenth, two characters swapped in each.
TEST(Storage, ReadsTheIdentityOfAnAtaDiskBehindAnyAdapter) {
    std::string page = "00 89 02 38";
    for (int i = 4; i < 60 + 512; ++i) {
        const int word = (i - 60) / 2;
        const bool inSerial = i >= 60 && word >= 10 && word < 20;
        page += inSerial ? (i % 2 == 0 ? " 42" : " 41") : " 20";
    }
    const std::string device = "pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0";
    TestMachine machine(disk("sdb", device, {"removable: 0"}) + "sys/devices/" + device +
                        "/vpd_pg89 = " + page + "\n");
    EXPECT_EQ("ABABABABABABABABABAB", collectOne(machine, "Storage").at("SerialNumber"));
}

TEST(Storage, GivesNoMediumOfAVirtualDisk) {
    TestMachine virtio(disk("vda", "pci0000:00/0000:00:02.0/virtio1", {"queue/rotational: 1"}) +
                       "sys/devices/pci0000:00/0000:00:02.0/virtio1/vendor: 0x1af4\n");
    Fields fields = collectOne(virtio, "Storage");
    EXPECT_EQ(0U, fields.count("MediaType"));
    EXPECT_EQ(0U, fields.count("Vendor"));
    TestMachine qemu(disk("sda", "ata1/host0/target0:0:0/0:0:0:0", {"queue/rotational: 0"}) +
                     "sys/devices/ata1/host0/target0:0:0/0:0:0:0/model: QEMU HARDDISK\n");
    EXPECT_EQ(0U, collectOne(qemu, "Storage").count("MediaType"));
}

TEST(Storage, NamesTheMakerOfACard) {
    const std::string card = "sys/devices/mmc0/mmc0:0001/";
    TestMachine machine(disk("mmcblk0", "mmc0/mmc0:0001", {}) + card + "type: SD\n" + card +
                        "manfid: 0x000003\n" + card + "name: SU08G\n" + card + "serial: 0x1a2b3c4d\n");
    EXPECT_THAT(collectOne(machine, "Storage"), IsSupersetOf(Fields{{"Interface", "SD"},
                                                                    {"Vendor", "SanDisk"},
                                                                    {"Model", "SU08G"},
                                                                    {"SerialNumber", "0x1a2b3c4d"},
                                                                    {"MediaType", "Flash"},
                                                                    {"BusAddress", "mmc0:0001"}}));
}

TEST(Storage, SeesThatADiskIsAPathOfAnother) {
    TestMachine machine(disk("sda", "x", {"holders/dm-0/dev: 253:0"}) +
                        "sys/block/dm-0/dm/uuid: mpath-3600a\n");
    EXPECT_EQ("true", collectOne(machine, "Storage").at("Multipath"));
}

TEST(Storage, ReportsATapeDriveOnceOfItsManyNames) {
    TestMachine machine(
        "sys/class/scsi_tape/st0/dev: 9:0\nsys/class/scsi_tape/nst0/dev: 9:128\n"
        "sys/class/scsi_tape/st0a/dev: 9:96\n");
    EXPECT_EQ("Tape", collectOne(machine, "Storage").at("Kind"));
}

}  // namespace
