// CPU topology and identity, and the group Processor made of them.
#include <gtest/gtest.h>

#include "scanners/zukhw/cpu_topology.h"
#include "tests/zukhw/test_machine.h"

namespace {

std::string cpuFile(unsigned cpu, const std::string& file, const std::string& value) {
    return "sys/devices/system/cpu/cpu" + std::to_string(cpu) + '/' + file + ": " + value + '\n';
}

std::string present(const std::string& list) {
    return "sys/devices/system/cpu/present: " + list + '\n';
}

// A CPU with its place among others.
std::string placed(unsigned cpu, unsigned package, unsigned core, const std::string& siblings) {
    return cpuFile(cpu, "topology/physical_package_id", std::to_string(package)) +
           cpuFile(cpu, "topology/core_id", std::to_string(core)) +
           cpuFile(cpu, "topology/thread_siblings_list", siblings);
}

TEST(Processor, TellsTheThreadsPlaceInItsCore) {
    TestMachine machine(present("0-2") + placed(0, 0, 0, "0,2") + placed(1, 1, 0, "1") +
                        placed(2, 0, 0, "0,2"));
    const std::vector<Fields> cpus = collectInstances(*machine, "Processor");
    ASSERT_EQ(3U, cpus.size());
    EXPECT_EQ("0", cpus[0].at("ThreadIndex"));
    EXPECT_EQ("0", cpus[1].at("ThreadIndex"));
    EXPECT_EQ("1", cpus[1].at("SocketId"));
    EXPECT_EQ("1", cpus[2].at("ThreadIndex"));
}

TEST(Processor, KeepsAnOfflineCpuWithWhatIsKnownOfIt) {
    TestMachine machine(present("0-1") + placed(0, 0, 0, "0") + cpuFile(1, "online", "0") +
                        "sys/devices/system/node/node1/cpulist: 0\n"
                        "sys/devices/system/cpu/cpu1/node1 -> ../../node/node1\n");
    const std::vector<Fields> cpus = collectInstances(*machine, "Processor");
    ASSERT_EQ(2U, cpus.size());
    EXPECT_EQ("true", cpus[0].at("Online"));
    EXPECT_EQ((Fields{{"Index", "1"}, {"Online", "false"}, {"NumaNode", "1"}}), cpus[1]);
}

TEST(Processor, TakesTheNodeFromItsLinkWhereNoNodeListsIt) {
    TestMachine machine(present("0") + placed(0, 0, 0, "0") +
                        "sys/devices/system/cpu/cpu0/node3 -> ../../node/node3\n");
    EXPECT_EQ("3", collectOne(machine, "Processor").at("NumaNode"));
}

TEST(Processor, TellsTheBookOfEveryCpuWithoutDrawers) {
    TestMachine machine(present("0-1") + placed(0, 1, 0, "0") + placed(1, 1, 1, "1") +
                        cpuFile(0, "topology/book_id", "1") + cpuFile(1, "topology/book_id", "2"));
    const std::vector<Fields> cpus = collectInstances(*machine, "Processor");
    EXPECT_EQ("1", cpus[0].at("BookId"));
    EXPECT_EQ("2", cpus[1].at("BookId"));
}

TEST(Processor, TellsTheThreadsPlaceWhereCoresHaveNoNumbers) {
    TestMachine machine(present("0-1") + cpuFile(0, "topology/core_id", "-1") +
                        cpuFile(0, "topology/thread_siblings_list", "0-1") +
                        cpuFile(1, "topology/core_id", "-1") +
                        cpuFile(1, "topology/thread_siblings_list", "0-1"));
    const std::vector<Fields> cpus = collectInstances(*machine, "Processor");
    EXPECT_EQ(0U, cpus[1].count("CoreId"));
    EXPECT_EQ("1", cpus[1].at("ThreadIndex"));
}

TEST(Processor, TellsTheBaseFrequencyWithoutAHighest) {
    TestMachine machine(present("0") + cpuFile(0, "cpufreq/base_frequency", "1900000"));
    EXPECT_EQ("1900", collectOne(machine, "Processor").at("BaseMHz"));
}

TEST(Processor, LeavesOutASpeedThatIsNoNumber) {
    for (const char* text : {"422=.00", ".5", "04.5", "5."}) {
        TestMachine machine(present("0") + "proc/cpuinfo:\n\tprocessor : 0\n\tbogomips : " + text + "\n");
        EXPECT_EQ(0U, collectOne(machine, "Processor").count("BogoMips")) << text;
    }
}

TEST(Processor, LeavesOutPlacesThatThePlatformDoesNotTell) {
    TestMachine machine(present("0") + cpuFile(0, "topology/physical_package_id", "-1") +
                        cpuFile(0, "topology/core_id", "0") + cpuFile(0, "topology/cluster_id", "65535"));
    const Fields cpu = collectOne(machine, "Processor");
    EXPECT_EQ(0U, cpu.count("SocketId"));
    EXPECT_EQ(0U, cpu.count("ClusterId"));
    EXPECT_EQ("0", cpu.at("CoreId"));
}

TEST(Processor, ReadsMasksOfOldKernelsAndFindsCpusWithoutAList) {
    TestMachine machine(
        cpuFile(0, "topology/core_id", "0") + cpuFile(0, "topology/thread_siblings", "00000101") +
        cpuFile(8, "topology/core_id", "0") + cpuFile(8, "topology/thread_siblings", "00000101"));
    const std::vector<Fields> cpus = collectInstances(*machine, "Processor");
    ASSERT_EQ(2U, cpus.size());
    EXPECT_EQ("8", cpus[1].at("Index"));
    EXPECT_EQ("1", cpus[1].at("ThreadIndex"));
}

std::string cache(unsigned cpu, unsigned index, const std::string& level, const std::string& type,
                  const std::string& size, const std::string& shared) {
    const std::string directory = "cache/index" + std::to_string(index) + '/';
    return cpuFile(cpu, directory + "level", level) + cpuFile(cpu, directory + "type", type) +
           cpuFile(cpu, directory + "size", size) + cpuFile(cpu, directory + "shared_cpu_list", shared);
}

TEST(Processor, TellsTheCachesThatServeIt) {
    TestMachine machine(present("0-1") + cache(0, 0, "1", "Data", "32K", "0") +
                        cache(0, 1, "1", "Instruction", "64K", "0") +
                        cache(0, 2, "2", "Unified", "1024K", "0-1") + cache(1, 0, "1", "Data", "48K", "1") +
                        cache(1, 2, "2", "Unified", "1024K", "0-1"));
    const std::vector<Fields> cpus = collectInstances(*machine, "Processor");
    EXPECT_EQ("32768", cpus[0].at("L1dCacheBytes"));
    EXPECT_EQ("65536", cpus[0].at("L1iCacheBytes"));
    EXPECT_EQ("49152", cpus[1].at("L1dCacheBytes"));
    EXPECT_EQ("1048576", cpus[1].at("L2CacheBytes"));
    EXPECT_EQ(0U, cpus[1].count("L3CacheBytes"));
    EXPECT_EQ(4U, machine->shared<CpuTopology>().caches().size());  // the shared one once
}

struct KindCase {
    const char* why;
    std::string tree;
    const char* first;   // CoreType of CPU 0; empty for none
    const char* second;  // of CPU 1
};

TEST(Processor, TellsCoresOfTwoKindsApart) {
    const auto both = [](const char* file, const char* a, const char* b) {
        return cpuFile(0, file, a) + cpuFile(1, file, b);
    };
    const KindCase cases[] = {
        {"hybrid x86", "sys/devices/cpu_core/cpus: 0\nsys/devices/cpu_atom/cpus: 1\n", "Performance",
         "Efficiency"},
        {"capacities", both("cpu_capacity", "280", "1024"), "Efficiency", "Performance"},
        {"equal capacities", both("cpu_capacity", "1024", "1024"), "", ""},
        {"base frequency",
         both("cpufreq/cpuinfo_max_freq", "5", "5") + both("cpufreq/base_frequency", "1900000", "1400000"),
         "Performance", "Efficiency"},
        {"favoured core", both("cpufreq/cpuinfo_max_freq", "5000000", "5200000"), "", ""},
        {"slow core", both("cpufreq/cpuinfo_max_freq", "5000000", "3000000"), "Performance", "Efficiency"},
    };
    for (const KindCase& c : cases) {
        TestMachine machine(present("0-1") + c.tree);
        std::vector<Fields> cpus = collectInstances(*machine, "Processor");
        EXPECT_EQ(c.first, cpus[0]["CoreType"]) << c.why;
        EXPECT_EQ(c.second, cpus[1]["CoreType"]) << c.why;
    }
}

struct IdentityCase {
    const char* why;
    const char* cpuinfo;  // as a machine tree's block
    Fields expected;      // of CPU 0
};

TEST(Processor, IsIdentifiedOnEveryArchitecture) {
    const IdentityCase cases[] = {
        {"x86",
         "\tprocessor : 0\n\tvendor_id : GenuineIntel\n\tcpu family : 6\n\tmodel : 58\n\tmodel name : i5  X\n"
         "\tstepping : 9\n\tmicrocode : 0x19\n\tbogomips : 3355.62\n"
         "\taddress sizes : 36 bits physical, 48 bits virtual\n",
         {{"Manufacturer", "Intel"},
          {"Model", "i5 X"},
          {"Family", "6"},
          {"ModelNumber", "58"},
          {"Stepping", "9"},
          {"MicrocodeVersion", "0x19"},
          {"BogoMips", "3355.62"},
          {"PhysicalAddressBits", "36"},
          {"VirtualAddressBits", "48"}}},
        {"arm64",
         "\tprocessor : 0\n\tBogoMIPS : 38.40\n\tCPU implementer : 0x41\n\tCPU variant : 0x1\n\tCPU part : "
         "0xd46\n"
         "\tCPU revision : 1\n",
         {{"Manufacturer", "ARM"}, {"Model", "Cortex-A510"}, {"Stepping", "r1p1"}, {"BogoMips", "38.40"}}},
        {"arm64, a core without a name",
         "\tprocessor : 0\n\tCPU implementer : 0x41\n\tCPU variant : 0x0\n\tCPU part : 0xfff\n\tCPU revision "
         ": 2\n",
         {{"Manufacturer", "ARM"}, {"Model", "implementer 0x41 part 0xfff"}, {"Stepping", "r0p2"}}},
        {"old arm: what all have in common stands after the last CPU",
         "\tProcessor : ARMv7 Processor rev 4 (v7l)\n\tprocessor : 0\n\tBogoMIPS : 1.5\n\t\n\tCPU "
         "implementer : 0x41\n"
         "\tCPU variant : 0x0\n\tCPU part : 0xc0f\n\tCPU revision : 4\n",
         {{"Manufacturer", "ARM"}, {"Model", "Cortex-A15"}, {"Stepping", "r0p4"}, {"BogoMips", "1.5"}}},
        {"arm, a kernel that names the core",
         "\tprocessor : 0\n\tmodel name : PJ4Bv7 Processor rev 2 (v7l)\n\tCPU implementer : 0x56\n"
         "\tCPU variant : 0x2\n\tCPU part : 0x584\n\tCPU revision : 2\n",
         {{"Manufacturer", "Marvell"}, {"Model", "PJ4Bv7 Processor rev 2 (v7l)"}, {"Stepping", "r2p2"}}},
        {"s390",
         "\tvendor_id : IBM/S390\n\tbogomips per cpu: 3033.00\n"
         "\tprocessor 0: version = FF,  identification = 0133E8,  machine = 2964\n",
         {{"Manufacturer", "IBM"}, {"Model", "2964"}, {"BogoMips", "3033.00"}}},
        {"POWER",
         "\tprocessor : 0\n\tcpu : POWER9 (raw), altivec supported\n",
         {{"Model", "POWER9 (raw), altivec supported"}}},
        {"RISC-V",
         "\tprocessor : 0\n\tmvendorid : 0x489\n\tuarch : sifive,u74-mc\n",
         {{"Manufacturer", "SiFive"}, {"Model", "sifive,u74-mc"}}},
        {"MIPS", "\tprocessor : 0\n\tcpu model : ICT Loongson-3 V0.5\n", {{"Model", "ICT Loongson-3 V0.5"}}},
    };
    for (const IdentityCase& c : cases) {
        TestMachine machine(present("0") + "proc/cpuinfo:\n" + c.cpuinfo);
        Fields expected = c.expected;
        expected.insert({{"Index", "0"}, {"Online", "true"}});
        EXPECT_EQ(expected, collectOne(machine, "Processor")) << c.why;
    }
}

TEST(Processor, IsIdentifiedByItsRegisterWithoutABlock) {
    TestMachine machine(present("0") + cpuFile(0, "regs/identification/midr_el1", "0x00000000411fd4e0"));
    const Fields cpu = collectOne(machine, "Processor");
    EXPECT_EQ("Cortex-X3", cpu.at("Model"));
    EXPECT_EQ("r1p0", cpu.at("Stepping"));
}

TEST(Processor, TakesCachesOfS390FromCpuinfo) {
    TestMachine machine(
        present("0") +
        "proc/cpuinfo:\n\tvendor_id : IBM/S390\n"
        "\tcache0 : level=1 type=Data scope=Private size=128K line_size=256 associativity=8\n"
        "\tcache1 : level=1 type=Instruction scope=Private size=96K line_size=256 associativity=6\n"
        "\tcache2 : level=3 type=Unified scope=Shared size=65536K line_size=256 associativity=16\n");
    const Fields cpu = collectOne(machine, "Processor");
    EXPECT_EQ("131072", cpu.at("L1dCacheBytes"));
    EXPECT_EQ("98304", cpu.at("L1iCacheBytes"));
    EXPECT_EQ("67108864", cpu.at("L3CacheBytes"));
}

TEST(Processor, TakesTheBaseFrequencyFromAcpi) {
    TestMachine machine(present("0") + cpuFile(0, "acpi_cppc/nominal_freq", "2450"));
    EXPECT_EQ("2450", collectOne(machine, "Processor").at("BaseMHz"));
}

TEST(Processor, SurvivesHostileLists) {
    TestMachine machine(present("0-4294967295") + "proc/cpuinfo:\n\tprocessor : 99999999999\n");
    EXPECT_EQ("", collectXml(*machine, "Processor"));
}

}  // namespace
