#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "scanners/zukhw/smbios_names.h"
#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;
using namespace std::string_literals;

constexpr char kGroup[] = "PhysicalProcessor";

std::string dmi(const std::string& table) {
    return "sys/firmware/dmi/tables/DMI = " + hexOf(table) + "\n";
}

// A processor up to and with the part number; status 41h: populated and enabled.
std::string record(unsigned handle, char status, const std::string& socket) {
    return structure(4, handle,
                     "\x01\x03\xB3\x02\x54\x06\x05\x00\xFF\xFB\xEB\xBF\x03\x92\x64\x00\xA0\x0F\xC4\x09"s +
                         status + "\x36\x00\x00\x00\x00\x00\x00\x04\x05\x06\x08\x07\x10"s,
                     {socket, "Intel(R) Corporation", "Intel(R) Xeon(R)", "S-1", "A-1", "P-1"});
}

std::string cpu(unsigned index, unsigned package, unsigned core) {
    const std::string topology = "sys/devices/system/cpu/cpu" + std::to_string(index) + "/topology/";
    return topology + "physical_package_id: " + std::to_string(package) + "\n" + topology +
           "core_id: " + std::to_string(core) + "\n";
}

const std::string kTwoSockets =
    "sys/devices/system/cpu/present: 0-3\n" + cpu(0, 0, 0) + cpu(1, 0, 0) + cpu(2, 1, 0) + cpu(3, 1, 1);

TEST(PhysicalProcessor, JoinsRecordsWithAsManyPackages) {
    TestMachine machine(kTwoSockets + dmi(record(0x401, '\x41', "CPU2") + record(0x400, '\x41', "CPU1")));
    const std::vector<Fields> sockets = collectInstances(*machine, kGroup);
    ASSERT_EQ(2U, sockets.size());
    EXPECT_EQ("CPU1", sockets[0].at("SocketDesignation"));
    EXPECT_EQ("0", sockets[0].at("SocketId"));
    EXPECT_EQ("1", sockets[0].at("Cores"));
    EXPECT_EQ("2", sockets[0].at("Threads"));
    EXPECT_EQ("2", sockets[0].at("ThreadsPerCore"));
    EXPECT_EQ("7", sockets[0].at("CoresEnabled"));
    EXPECT_EQ("CPU2", sockets[1].at("SocketDesignation"));
    EXPECT_EQ("2", sockets[1].at("Cores"));
}

TEST(PhysicalProcessor, DoesNotGuessWhichRecordIsWhichPackage) {
    TestMachine machine(kTwoSockets + dmi(record(1, '\x41', "CPU1") + record(2, '\0', "CPU2")));
    const std::vector<Fields> sockets = collectInstances(*machine, kGroup);
    ASSERT_EQ(3U, sockets.size());
    EXPECT_EQ(0U, sockets[0].count("SocketDesignation"));
    EXPECT_EQ("true", sockets[1].at("Populated"));
    const Fields empty = {
        {"SocketDesignation", "CPU2"}, {"Populated", "false"}, {"SocketType", "Socket LGA3647-1"}};
    EXPECT_EQ(empty, sockets[2]);
}

std::string topologyFile(unsigned index, const std::string& file, const std::string& value) {
    return "sys/devices/system/cpu/cpu" + std::to_string(index) + "/topology/" + file + ": " + value + "\n";
}

// As in partitions of POWER machines: four CPUs without numbers of packages.
TEST(PhysicalProcessor, TellsPackagesWithoutNumbersApartByTheirCpus) {
    std::string tree = "sys/devices/system/cpu/present: 0-3\n";
    for (unsigned index = 0; index < 4; ++index) {
        const std::string both = index < 2 ? "0-1" : "2-3";
        tree += topologyFile(index, "physical_package_id", "-1") + topologyFile(index, "core_id", "-1") +
                topologyFile(index, "core_siblings_list", both) +
                topologyFile(index, "thread_siblings_list", both);
    }
    TestMachine machine(tree);
    const std::vector<Fields> sockets = collectInstances(*machine, kGroup);
    ASSERT_EQ(2U, sockets.size());
    EXPECT_EQ((Fields{{"Populated", "true"},
                      {"Cores", "1"},
                      {"Threads", "2"},
                      {"OnlineThreads", "2"},
                      {"ThreadsPerCore", "2"}}),
              sockets[1]);
}

// The numbers are those within a book.
TEST(PhysicalProcessor, TellsPackagesOfTheSameNumberApartByTheirBooks) {
    TestMachine machine("sys/devices/system/cpu/present: 0-1\n" + cpu(0, 1, 0) + cpu(1, 1, 0) +
                        topologyFile(0, "book_id", "0") + topologyFile(1, "book_id", "1"));
    const std::vector<Fields> sockets = collectInstances(*machine, kGroup);
    ASSERT_EQ(2U, sockets.size());
    EXPECT_EQ("1", sockets[0].at("SocketId"));
    EXPECT_EQ("1", sockets[1].at("SocketId"));
}

TEST(PhysicalProcessor, NamesTheFirstAndTheLastSocketOfTheStandard) {
    EXPECT_EQ("Other", processorSocketName(0x01));
    EXPECT_EQ("Socket LGA7529", processorSocketName(0x50));
    EXPECT_EQ("Socket BGA2833", processorSocketName(0x57));
    EXPECT_EQ("", processorSocketName(0x58));
    EXPECT_EQ("", processorSocketName(0xFF));
}

TEST(PhysicalProcessor, BelievesTheTableWhenTheKernelSaysNothing) {
    TestMachine machine(dmi(record(1, '\x41', "CPU1")));
    const Fields expected = {
        {"SocketDesignation", "CPU1"},
        {"Populated", "true"},
        {"Status", "Enabled"},
        {"Manufacturer", "Intel(R) Corporation"},
        {"Model", "Intel(R) Xeon(R)"},
        {"ProcessorId", "bfebfbff00050654"},
        {"Cores", "8"},
        {"Threads", "16"},
        {"CoresEnabled", "7"},
        {"MaxMHz", "4000"},
        {"CurrentMHz", "2500"},
        {"ExternalClockMHz", "100"},
        {"VoltageMillivolts", "1800"},
        {"SocketType", "Socket LGA3647-1"},
        {"SerialNumber", "S-1"},
        {"AssetTag", "A-1"},
        {"PartNumber", "P-1"},
    };
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(PhysicalProcessor, ListsTheVulnerabilitiesThatAreTold) {
    const std::string directory = "sys/devices/system/cpu/vulnerabilities/";
    TestMachine machine(kTwoSockets + directory + "meltdown: Not affected\n" + directory + "spectre_v1/\n");
    EXPECT_EQ("meltdown=Not affected", collectInstances(*machine, kGroup)[0].at("Vulnerabilities"));
}

TEST(PhysicalProcessor, SumsTheCachesOfASocket) {
    const auto cache = [](unsigned index, const char* cpus) {
        const std::string path = "sys/devices/system/cpu/cpu" + std::to_string(index) + "/cache/index0/";
        return path + "level: 2\n" + path + "type: Unified\n" + path + "size: 1024K\n" + path +
               "shared_cpu_list: " + cpus + "\n";
    };
    TestMachine machine(kTwoSockets + cache(0, "0-1") + cache(1, "0-1") + cache(2, "2") + cache(3, "3"));
    const std::vector<Fields> sockets = collectInstances(*machine, kGroup);
    EXPECT_EQ("1048576", sockets.at(0).at("L2CacheBytes"));
    EXPECT_EQ("2097152", sockets.at(1).at("L2CacheBytes"));
}

TEST(PhysicalProcessor, CountsACacheOnceThatIsShownTwice) {
    std::string caches;
    for (const char* index : {"index0", "index1"}) {
        const std::string path = std::string("sys/devices/system/cpu/cpu0/cache/") + index + '/';
        caches += path + "level: 1\n" + path + "type: Data\n" + path + "size: 32K\n" + path +
                  "shared_cpu_list: 0\n";
    }
    TestMachine machine("sys/devices/system/cpu/present: 0\n" + cpu(0, 0, 0) + caches);
    EXPECT_EQ("32768", collectOne(machine, kGroup).at("L1dCacheBytes"));
}

// Kernels before 5.2 do not number the dies of a package, on each of which core numbers begin at 0.
TEST(PhysicalProcessor, TellsCoresOfTheSameNumberApartByTheirThreads) {
    std::string tree = "sys/devices/system/cpu/present: 0-3\n";
    const char* threads[] = {"0,2", "1,3", "0,2", "1,3"};
    for (unsigned index = 0; index < 4; ++index) {
        tree += cpu(index, 0, 0) + "sys/devices/system/cpu/cpu" + std::to_string(index) +
                "/topology/thread_siblings_list: " + threads[index] + "\n";
    }
    TestMachine machine(tree);
    const Fields fields = collectOne(machine, kGroup);
    EXPECT_EQ("2", fields.at("Cores"));
    EXPECT_EQ("2", fields.at("ThreadsPerCore"));
}

// The modules of AMD's family 15h: two cores that share caches, which the kernel calls threads of one.
TEST(PhysicalProcessor, CountsTheCoresOfAModule) {
    std::string tree = "sys/devices/system/cpu/present: 0-1\n";
    for (unsigned index = 0; index < 2; ++index) {
        const std::string path = "sys/devices/system/cpu/cpu" + std::to_string(index) + '/';
        const std::string cache = path + "cache/index0/";
        tree += cpu(index, 0, index) + path + "topology/thread_siblings_list: 0-1\n" + cache + "level: 2\n" +
                cache + "type: Unified\n" + cache + "size: 2048K\n" + cache + "shared_cpu_map: 00000003\n" +
                cache + "shared_cpu_list: " + std::to_string(index) + "\n";
    }
    TestMachine machine(tree);
    const Fields fields = collectOne(machine, kGroup);
    EXPECT_EQ("2", fields.at("Cores"));
    EXPECT_EQ("1", fields.at("ThreadsPerCore"));
    EXPECT_EQ("2097152", fields.at("L2CacheBytes"));
}

struct WidthCase {
    const char* cpuinfo;
    std::optional<std::string> is64Bit;
};

TEST(PhysicalProcessor, KnowsHowWideOtherProcessorsAre) {
    const WidthCase kCases[] = {
        {"\tflags : fpu lm\n", "true"},
        {"\tflags : fpu tsc\n", "false"},
        {"\tISA : loongarch32 loongarch64\n\tFeatures : cpucfg fpu lsx\n", "true"},
        {"\tisa : rv64imafdc\n", "true"},
        {"\tFeatures : half thumb\n", {}},  // the kernel may be narrower than the processor
    };
    for (const WidthCase& c : kCases) {
        TestMachine machine("sys/devices/system/cpu/present: 0\n" + cpu(0, 0, 0) +
                            "proc/cpuinfo:\n\tprocessor : 0\n" + c.cpuinfo);
        const Fields fields = collectOne(machine, kGroup);
        const auto found = fields.find("Is64Bit");
        EXPECT_EQ(c.is64Bit, found == fields.end() ? std::nullopt : std::optional(found->second))
            << c.cpuinfo;
    }
}

TEST(PhysicalProcessor, TellsFeaturesByTheFlags) {
    TestMachine machine("sys/devices/system/cpu/present: 0\n" + cpu(0, 0, 0) +
                        "proc/cpuinfo:\n\tprocessor : 0\n\tflags : vmx fpu lm\n"
                        "\taddress sizes : 46 bits physical, 48 bits virtual\n"
                        "sys/devices/system/cpu/vulnerabilities/meltdown: Not affected\n");
    EXPECT_THAT(collectOne(machine, kGroup),
                IsSupersetOf(Fields{{"Flags", "fpu lm vmx"},
                                    {"Is64Bit", "true"},
                                    {"HardwareVirtualization", "VT-x"},
                                    {"PhysicalAddressBits", "46"},
                                    {"Vulnerabilities", "meltdown=Not affected"}}));
}

TEST(PhysicalProcessor, SurvivesRecordsOfEveryLength) {
    const std::string whole = record(1, '\x41', "CPU1");
    const std::size_t formatted = static_cast<unsigned char>(whole[1]);
    for (std::size_t length = 4; length <= formatted; ++length) {
        std::string cut = whole.substr(0, length) + whole.substr(formatted);
        cut[1] = static_cast<char>(length);
        TestMachine machine(dmi(cut));
        EXPECT_EQ(length > 0x18 ? "true" : "false", collectOne(machine, kGroup).at("Populated")) << length;
    }
}

TEST(PhysicalProcessor, HasNoInstanceOnAMachineThatTellsNothing) {
    TestMachine machine("");
    EXPECT_EQ("", collectXml(*machine, kGroup));
}

}  // namespace
