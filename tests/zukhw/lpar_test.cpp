#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

constexpr char kGroup[] = "Lpar";

TEST(Lpar, DescribesAPowerPartition) {
    TestMachine machine(
        "proc/ppc64/lparcfg:\n\tlparcfg 1.9\n\tserial_number=IBM,0278A1B2C\n\tsystem_type=IBM,9009-22A\n"
        "\tpartition_id=7\n\tsystem_active_processors=16\n\tsystem_potential_processors=32\n"
        "\tpartition_entitled_capacity=150\n\tpartition_max_entitled_capacity=400\n\tMinEntCap="
        "50\n\tMinProcs=1\n"
        "\tDesProcs=2\n\tMinMem=1024\n\tDesMem=8192\n\tpartition_active_processors=2\n"
        "\tpartition_potential_processors=4\n\tpool=0\n\tpool_capacity=1600\n\tpool_num_procs=16\n"
        "\tcapacity_weight=128\n\tcapped=0\n\tshared_processor_mode=1\n\tentitled_memory=8589934592\n"
        "sys/devices/system/cpu/cpu0/topology/thread_siblings_list: 0-7\n"
        "proc/device-tree/ibm,partition-name = " +
        hexOf("web1\0"s) + "\n");
    const Fields expected = {
        {"PartitionId", "7"},
        {"PartitionName", "web1"},
        {"SystemType", "IBM,9009-22A"},
        {"SystemSerialNumber", "IBM,0278A1B2C"},
        {"SharedProcessorMode", "true"},
        {"Capped", "false"},
        {"EntitledCapacity", "150"},
        {"MinimumEntitledCapacity", "50"},
        {"MaximumEntitledCapacity", "400"},
        {"ActiveProcessors", "2"},
        {"PotentialProcessors", "4"},
        {"MinimumProcessors", "1"},
        {"DesiredProcessors", "2"},
        {"SystemActiveProcessors", "16"},
        {"SystemPotentialProcessors", "32"},
        {"PoolId", "0"},
        {"PoolCapacity", "1600"},
        {"PoolProcessors", "16"},
        {"CapacityWeight", "128"},
        {"MinimumMemoryBytes", "1073741824"},
        {"DesiredMemoryBytes", "8589934592"},
        {"EntitledMemoryBytes", "8589934592"},
        {"Smt", "8"},
        {"Kind", "PowerLpar"},
    };
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(Lpar, DescribesAnS390Partition) {
    TestMachine machine(
        "proc/sysinfo:\n\tManufacturer:         IBM\n\tType:                 2964\n"
        "\tModel:                701              N63\n\tSequence Code:        00000000000DFEE7\n"
        "\tCapability:           1234 616\n\tCPUs Total:           12\n\n\tLPAR Number:          3\n"
        "\tLPAR Characteristics: Shared\n\tLPAR Name:            LP03\n\tLPAR Adjustment:      100\n"
        "\tLPAR CPUs Total:      8\n\tLPAR CPUs Configured: 4\n\tLPAR CPUs Standby:    0\n"
        "\tLPAR CPUs Reserved:   4\n\tLPAR CPUs Dedicated:  0\n\tLPAR CPUs Shared:     4\n");
    const Fields expected = {
        {"PartitionId", "3"},      {"PartitionName", "LP03"},    {"Characteristics", "Shared"},
        {"ActiveProcessors", "4"}, {"PotentialProcessors", "8"}, {"DedicatedProcessors", "0"},
        {"SharedProcessors", "4"}, {"ReservedProcessors", "4"},  {"Adjustment", "100"},
        {"MachineType", "2964"},   {"MachineModel", "701"},      {"SystemSerialNumber", "00000000000DFEE7"},
        {"CpcProcessors", "12"},   {"Capability", "1234 616"},   {"Kind", "S390Lpar"},
    };
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(Lpar, HasNoInstanceOnOtherMachines) {
    for (const char* tree : {"proc/cpuinfo: x\n", "proc/sysinfo: Manufacturer: IBM\n",
                             "proc/ppc64/lparcfg: system_type=IBM pSeries (emulated by qemu)\n"}) {
        TestMachine machine(tree);
        EXPECT_EQ("", collectXml(*machine, kGroup)) << tree;
    }
}

}  // namespace
