// What is read of captured disks and volumes against what lsblk prints of them.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/test_machine.h"

namespace {

constexpr char kCapture[] = "lsblk/simple-lvm";

// A row of lsblk's tables, without the branches of its tree, and the device that it stands under.
struct Row {
    std::string name;
    std::vector<std::string> cells;  // those behind the name; empty ones are not told from missing ones
    std::string parent;
};

std::vector<Row> readTable(const std::string& table) {
    const std::string text = captureText("lsblk/lsblk-simple-lvm-" + table + ".txt");
    std::vector<Row> rows;
    std::string parent;
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> cells = words(line);
        if (cells.at(0) == "NAME") continue;
        const bool isChild = cells[0][0] == '|' || cells[0][0] == '`';
        Row row;
        row.name = cells[0].substr(isChild ? 2 : 0);
        row.cells.assign(cells.begin() + 1, cells.end());
        if (isChild) row.parent = parent;
        if (!isChild) parent = row.name;
        rows.push_back(row);
    }
    return rows;
}

// The group's instances by the name of their device.
std::map<std::string, Fields> byDevice(Machine& machine, const char* group) {
    std::map<std::string, Fields> found;
    for (const Fields& fields : collectInstances(machine, group)) found[fields.at("DeviceName")] = fields;
    return found;
}

// "223.6G" is right for a size when it is so rounded.
void expectSize(const std::string& told, const std::string& bytes) {
    const double unit = told.back() == 'G' ? 1024.0 * 1024 * 1024 : 1024.0 * 1024;
    EXPECT_NEAR(std::stod(told), std::stod(bytes) / unit, 0.051) << told << ' ' << bytes;
}

class StorageCaptures : public testing::Test {
  protected:
    void SetUp() override { SKIP_WITHOUT_CAPTURES(); }
};

// "sda2 sda2 8:2 0 200M part /boot"
TEST_F(StorageCaptures, HaveTheDevicesThatLsblkLists) {
    const Capture capture(kCapture);
    Machine machine = capture.machine();
    const auto disks = byDevice(machine, "Storage");
    const auto partitions = byDevice(machine, "DiskPartition");
    const auto volumes = byDevice(machine, "Partition");
    static const std::map<std::string, std::string> kKinds = {
        {"loop", "Loop"}, {"lvm", "Lvm"}, {"part", "Partition"}};
    std::set<std::string> listed;
    for (const Row& row : readTable("basic")) {
        const std::string& device = row.cells.at(0);
        const std::string& type = row.cells.at(4);
        const std::string mount = row.cells.size() > 5 ? row.cells[5] : "";
        SCOPED_TRACE(device);
        listed.insert(device);
        const auto& group = type == "disk" ? disks : volumes;
        ASSERT_EQ(1U, group.count(device));
        expectSize(row.cells.at(3), group.at(device).at("SizeBytes"));
        if (type == "disk") continue;
        EXPECT_EQ(kKinds.at(type), valueOf(volumes.at(device), "Kind"));
        EXPECT_EQ(mount, valueOf(volumes.at(device), "MountPoints"));
        EXPECT_EQ(type == "lvm" ? row.name : "", valueOf(volumes.at(device), "Name"));
        if (type == "lvm") {
            EXPECT_NE(std::string::npos, valueOf(volumes.at(device), "Parents").find(row.parent));
        }
        if (type != "part") continue;
        ASSERT_EQ(1U, partitions.count(device));
        EXPECT_EQ(row.parent, valueOf(partitions.at(device), "Disk"));
        EXPECT_EQ(row.parent, valueOf(volumes.at(device), "Parents"));
        EXPECT_EQ(mount, valueOf(partitions.at(device), "MountPoint"));
    }
    for (const auto* group : {&disks, &partitions, &volumes}) {
        for (const auto& [device, fields] : *group) EXPECT_EQ(1U, listed.count(device)) << device;
    }
}

// "sda 0 0 0 0 running 0 disk cfq": read-only, removable, hot-pluggable, random, state, rotational.
TEST_F(StorageCaptures, HaveTheStatesThatLsblkLists) {
    const Capture capture(kCapture);
    Machine machine = capture.machine();
    const auto disks = byDevice(machine, "Storage");
    const auto volumes = byDevice(machine, "Partition");
    for (const Row& row : readTable("state")) {
        const auto disk = disks.find(row.name);
        if (disk != disks.end()) {
            EXPECT_EQ(row.cells.at(0) == "1" ? "true" : "false", valueOf(disk->second, "ReadOnly"));
            EXPECT_EQ(row.cells.at(1) == "1" ? "true" : "false", valueOf(disk->second, "Removable"));
            EXPECT_EQ(row.cells.at(4), valueOf(disk->second, "State"));
            EXPECT_EQ(row.cells.at(5) == "1" ? "HDD" : "SSD", valueOf(disk->second, "MediaType"));
        }
        const auto volume = volumes.find(row.name);
        if (volume == volumes.end()) continue;
        EXPECT_EQ(row.cells.at(0) == "1" ? "true" : "false", valueOf(volume->second, "ReadOnly"));
    }
}

// "sda 223.6G 0 512 0 512 512 128": the block sizes are the fifth and the sixth.
TEST_F(StorageCaptures, HaveTheBlockSizesThatLsblkLists) {
    const Capture capture(kCapture);
    Machine machine = capture.machine();
    const auto disks = byDevice(machine, "Storage");
    for (const Row& row : readTable("topo")) {
        const auto disk = disks.find(row.name);
        if (disk == disks.end()) continue;
        EXPECT_EQ(row.cells.at(4), valueOf(disk->second, "PhysicalBlockBytes"));
        EXPECT_EQ(row.cells.at(5), valueOf(disk->second, "LogicalBlockBytes"));
    }
}

// "sda KINGSTON SH103S3 ATA BBF0". That it speaks ATA is no vendor.
TEST_F(StorageCaptures, HaveTheModelsThatLsblkLists) {
    const Capture capture(kCapture);
    Machine machine = capture.machine();
    const auto disks = byDevice(machine, "Storage");
    for (const Row& row : readTable("vendor")) {
        const auto disk = disks.find(row.name);
        if (disk == disks.end()) continue;
        std::vector<std::string> model = row.cells;
        if (model.at(model.size() - 2) == "ATA") {
            EXPECT_EQ(model.back(), valueOf(disk->second, "FirmwareRevision"));
            model.resize(model.size() - 2);
        }
        EXPECT_EQ(join(model, " "), valueOf(disk->second, "Model"));
        EXPECT_EQ("", valueOf(disk->second, "Vendor"));
    }
}

TEST_F(StorageCaptures, HaveTheMountedFileSystems) {
    const Capture capture(kCapture);
    Machine machine = capture.machine();
    std::map<std::string, std::string> expected;
    for (const Row& row : readTable("basic")) {
        if (row.cells.size() > 5) expected[row.cells[5]] = "/dev/" + row.cells[0] + ' ' + row.parent;
    }
    std::map<std::string, std::string> found;
    for (const Fields& drive : collectInstances(machine, "LogicalDrive")) {
        if (drive.at("Kind") == "Ram") continue;
        found[drive.at("MountPoint")] = valueOf(drive, "Device") + ' ' + valueOf(drive, "Disks");
    }
    EXPECT_EQ(expected, found);
}

}  // namespace
