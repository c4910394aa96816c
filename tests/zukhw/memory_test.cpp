#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;
using namespace std::string_literals;

std::string array(unsigned handle, char use, const std::string& capacity) {
    return structure(16, handle, "\x03"s + use + "\x06"s + capacity + "\xFE\xFF\x04\x00"s, {});
}

std::string device(unsigned arrayHandle, const std::string& size) {
    return structure(
        17, 0x1100,
        std::string{static_cast<char>(arrayHandle & 0xFFU), static_cast<char>(arrayHandle >> 8)} +
            "\xFE\xFF\x48\x00\x40\x00"s + size + std::string(7, '\0'),
        {});
}

std::string table(const std::string& bytes) {
    return "sys/firmware/dmi/tables/DMI = " + hexOf(bytes) + "\n";
}

const std::string kGibibyte = "\x00\x04"s;            // 1024 MB
const std::string kCapacity8G = "\x00\x00\x80\x00"s;  // kB

TEST(Memory, SumsTheModulesOfSystemMemory) {
    TestMachine machine(table(array(1, 3, kCapacity8G) + array(2, 7, kCapacity8G) + device(1, kGibibyte) +
                              device(1, "\x00\x00"s) + device(2, kGibibyte)) +
                        "proc/meminfo:\n\tMemTotal: 1000000 kB\n");
    EXPECT_THAT(collectOne(machine, "Memory"), IsSupersetOf(Fields{{"InstalledBytes", "1073741824"},
                                                                   {"InstalledSource", "SMBIOS"},
                                                                   {"SlotsTotal", "2"},
                                                                   {"SlotsUsed", "1"},
                                                                   {"MaximumCapacityBytes", "8589934592"},
                                                                   {"ErrorCorrection", "Multi-bit ECC"}}));
}

TEST(Memory, CountsModulesOfAnArrayThatThereIsNot) {
    TestMachine machine(table(array(1, 3, kCapacity8G) + device(0x25, kGibibyte)));
    EXPECT_EQ("1073741824", collectOne(machine, "Memory").at("InstalledBytes"));
}

const std::string kTwoBlocks =
    "sys/devices/system/memory/block_size_bytes: 8000000\n"
    "sys/devices/system/memory/memory0/online: 1\n"
    "sys/devices/system/memory/memory1/online: 0\n"
    "sys/devices/system/memory/memory2/online: 1\n";

TEST(Memory, CountsOnlineBlocksWithoutFirmware) {
    TestMachine machine(kTwoBlocks);
    const Fields fields = collectOne(machine, "Memory");
    EXPECT_EQ("268435456", fields.at("InstalledBytes"));
    EXPECT_EQ("MemoryBlocks", fields.at("InstalledSource"));
    EXPECT_EQ(0U, fields.count("SlotsTotal"));
}

TEST(Memory, TakesTheStateOfBlocksWithoutTheOtherFile) {
    TestMachine machine(
        "sys/devices/system/memory/block_size_bytes: 8000000\n"
        "sys/devices/system/memory/memory0/state: online\n"
        "sys/devices/system/memory/memory1/state: offline\n");
    EXPECT_EQ("134217728", collectOne(machine, "Memory").at("InstalledBytes"));
}

// Pages of 4 KB, 32768 to a block; the firmware keeps a few of the last block's for itself.
std::string threeBlocks(const std::string& presentPages) {
    return "sys/devices/system/memory/block_size_bytes: 8000000\n"
           "sys/devices/system/memory/memory0/online: 1\n"
           "sys/devices/system/memory/memory1/online: 1\n"
           "sys/devices/system/memory/memory2/valid_zones: none\n"
           "proc/self/smaps:\n\tKernelPageSize: 4 kB\n"
           "proc/zoneinfo:\n\tNode 0, zone DMA\n\t        present  " +
           presentPages + "\n\tNode 0, zone Normal\n\t        spanned  999999\n\t        present  32768\n";
}

TEST(Memory, TakesAllBlocksForOnlineWhenTheZonesNeedThem) {
    TestMachine machine(threeBlocks("32769"));
    EXPECT_EQ("402653184", collectOne(machine, "Memory").at("InstalledBytes"));
}

TEST(Memory, AsksEachBlockWhenTheZonesNeedFewer) {
    TestMachine machine(threeBlocks("32768"));
    EXPECT_EQ("268435456", collectOne(machine, "Memory").at("InstalledBytes"));
}

TEST(Memory, DoesNotBelieveModulesSmallerThanWhatTheKernelHas) {
    TestMachine machine(table(array(1, 3, kCapacity8G) + device(1, kGibibyte)) + kTwoBlocks +
                        "proc/meminfo:\n\tMemTotal: 2000000 kB\n");
    EXPECT_EQ("MemoryBlocks", collectOne(machine, "Memory").at("InstalledSource"));
}

TEST(Memory, DoesNotBelieveModulesFarLargerThanTheBlocks) {
    TestMachine machine(table(array(1, 3, kCapacity8G) + device(1, "\x00\x20"s)) + kTwoBlocks +
                        "proc/meminfo:\n\tMemTotal: 200000 kB\n");
    EXPECT_EQ("268435456", collectOne(machine, "Memory").at("InstalledBytes"));
}

TEST(Memory, TakesTheFirmwaresMapNext) {
    TestMachine machine(
        "sys/firmware/memmap/0/start: 0x0\nsys/firmware/memmap/0/end: 0x9fbff\nsys/firmware/memmap/0/type: "
        "System RAM\n"
        "sys/firmware/memmap/1/start: 0xf0000\nsys/firmware/memmap/1/end: "
        "0xfffff\nsys/firmware/memmap/1/type: Reserved\n");
    const Fields fields = collectOne(machine, "Memory");
    EXPECT_EQ("654336", fields.at("InstalledBytes"));
    EXPECT_EQ("MemoryMap", fields.at("InstalledSource"));
}

TEST(Memory, TakesTheDeviceTreeLast) {
    TestMachine machine(
        "sys/firmware/devicetree/base/#address-cells = 00 00 00 02\n"
        "sys/firmware/devicetree/base/#size-cells = 00 00 00 01\n"
        "sys/firmware/devicetree/base/memory@0/reg = 00 00 00 00 00 00 00 00 40 00 00 00\n"
        "\t00 00 00 01 00 00 00 00 20 00 00 00\n");
    const Fields fields = collectOne(machine, "Memory");
    EXPECT_EQ("1610612736", fields.at("InstalledBytes"));
    EXPECT_EQ("DeviceTree", fields.at("InstalledSource"));
}

TEST(Memory, ReportsSwapDevicesWithBlanksInTheirNames) {
    TestMachine machine(
        "proc/swaps:\n\tFilename Type Size Used Priority\n\t/my\\040swap file 8 0 -2\n\t/dev/sda2 partition "
        "8 0 -3\n");
    EXPECT_EQ("/dev/sda2; /my swap", collectOne(machine, "Memory").at("SwapDevices"));
}

TEST(Memory, ReportsACgroupLimitOnlyWhenThereIsOne) {
    TestMachine none("sys/fs/cgroup/memory.max: max\nproc/meminfo:\n\tMemTotal: 1 kB\n");
    EXPECT_EQ(0U, collectOne(none, "Memory").count("CgroupLimitBytes"));
    TestMachine two("sys/fs/cgroup/memory.max: 1048576\n");
    EXPECT_EQ("1048576", collectOne(two, "Memory").at("CgroupLimitBytes"));
    TestMachine one(
        "sys/fs/cgroup/memory/memory.limit_in_bytes: 9223372036854771712\nproc/meminfo:\n\tMemTotal: 1 kB\n");
    EXPECT_EQ(0U, collectOne(one, "Memory").count("CgroupLimitBytes"));
}

TEST(Memory, HasNoInstanceOnAMachineThatTellsNothing) {
    TestMachine machine("");
    EXPECT_EQ("", collectXml(*machine, "Memory"));
}

}  // namespace
