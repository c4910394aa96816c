// What the scanner says of captured machines, against what other tools said of them.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/instance_reader.h"

namespace {

std::string valueOf(const Instance& instance, const char* field) {
    const std::string* value = instance.find(field);
    return value != nullptr ? *value : "";
}

std::set<std::string> valuesOf(const std::vector<Instance>& instances, const char* field) {
    std::set<std::string> values;
    for (const Instance& instance : instances) values.insert(valueOf(instance, field));
    values.erase("");
    return values;
}

std::string contentOf(const std::string& file) {
    return readFile(capturesFolder() + '/' + file);
}

// All values of the lines "key: value" up to the first empty one.
std::set<std::string> headValues(const std::string& text, std::string_view key) {
    std::set<std::string> values;
    for (const std::string_view line : lines(text)) {
        if (line.empty()) break;
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos && line.substr(0, colon) == key) {
            values.insert(cleanText(line.substr(colon + 1)));
        }
    }
    return values;
}

class LscpuCapture : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Lscpu, LscpuCapture,
                         testing::Values("arm-A510-A710-A715-X3", "armv7", "loongarch-loongson_3a5000_hv",
                                         "rv64-linux", "vbox-win", "vmware_fpe", "x86_64-64cpu-linux6.2",
                                         "x86_64-dell_e4310"));

TEST_P(LscpuCapture, AgreesOnTheProcessors) {
    SKIP_WITHOUT_CAPTURES();
    const std::string name = std::string("lscpu/") + GetParam();
    const std::string expected = contentOf(name + ".txt");
    const std::vector<Instance> cpus = readInstances(scanCapture(Capture(name), "Processor"));
    EXPECT_EQ(headValues(expected, "CPU(s)"), std::set<std::string>{std::to_string(cpus.size())});
    EXPECT_EQ(headValues(expected, "Model name"), valuesOf(cpus, "Model"));
    std::set<std::string> families = headValues(expected, "CPU family");
    families.erase("Loongson-64bit");  // our field is a number
    EXPECT_EQ(families, valuesOf(cpus, "Family"));
    EXPECT_EQ(headValues(expected, "Microcode version"), valuesOf(cpus, "MicrocodeVersion"));
    std::set<std::string> fastest;
    for (const std::string& text : headValues(expected, "CPU max MHz"))
        fastest.insert(text.substr(0, text.find('.')));
    EXPECT_EQ(fastest, valuesOf(cpus, "MaxMHz"));
}

// The rows "CPU,Core,Socket,Node" of the first table; -1 for what is empty.
std::vector<std::vector<int>> lscpuRows(const std::string& text) {
    std::vector<std::vector<int>> rows;
    bool inTable = false;
    for (const std::string_view line : lines(text)) {
        if (startsWith(line, "# CPU,Core,Socket,Node")) inTable = true;
        if (inTable && line.empty()) break;
        if (!inTable || startsWith(line, "#")) continue;
        std::vector<int> row;
        for (const std::string_view cell : split(line, ',')) {
            row.push_back(static_cast<int>(parseSigned(cell).value_or(-1)));
        }
        rows.push_back(row);
    }
    return rows;
}

TEST_P(LscpuCapture, AgreesOnCoresSocketsAndNodes) {
    SKIP_WITHOUT_CAPTURES();
    const std::string name = std::string("lscpu/") + GetParam();
    const std::vector<Instance> cpus = readInstances(scanCapture(Capture(name), "Processor"));
    const std::vector<std::vector<int>> rows = lscpuRows(contentOf(name + ".txt"));
    ASSERT_EQ(rows.size(), cpus.size());
    // Tools number cores and sockets anew: what must agree is which CPUs have one in common.
    std::map<std::string, std::set<int>> sockets;
    for (std::size_t i = 0; i < cpus.size(); ++i) {
        EXPECT_EQ(std::to_string(rows[i][0]), valueOf(cpus[i], "Index"));
        EXPECT_EQ(rows[i][3] < 0 ? "" : std::to_string(rows[i][3]), valueOf(cpus[i], "NumaNode"));
        sockets[valueOf(cpus[i], "SocketId")].insert(rows[i][2]);
    }
    for (const auto& [socket, numbers] : sockets) EXPECT_EQ(1U, numbers.size()) << socket;
}

struct CoreCase {
    const char* name;
    std::size_t cpus;
    std::size_t online;
    std::size_t packages;
    std::size_t cores;  // among CPUs that are online
    std::size_t efficient;
};

TEST(Captures, AgreeOnTheTopology) {
    SKIP_WITHOUT_CAPTURES();
    const CoreCase cases[] = {{"16em64t-4s2c2t-offlines", 16, 12, 4, 7, 0},
                              {"20em64t-hybrid-1p6c2t+2ca4co1t", 20, 20, 1, 14, 8},
                              {"2arm-2c", 2, 2, 1, 2, 0},
                              {"64amd64-4s2n4ca2co", 64, 64, 4, 64, 0}};
    for (const CoreCase& c : cases) {
        const Capture capture(std::string("hwloc/") + c.name);
        const std::vector<Instance> cpus = readInstances(scanCapture(capture, "Processor"));
        std::size_t online = 0, efficient = 0;
        std::set<std::string> cores;
        for (const Instance& cpu : cpus) {
            efficient += valueOf(cpu, "CoreType") == "Efficiency" ? 1 : 0;
            if (valueOf(cpu, "Online") != "true") continue;
            ++online;
            cores.insert(valueOf(cpu, "SocketId") + '/' + valueOf(cpu, "NumaNode") + '/' +
                         valueOf(cpu, "CoreId"));
        }
        EXPECT_EQ(c.cpus, cpus.size()) << c.name;
        EXPECT_EQ(c.online, online) << c.name;
        EXPECT_EQ(c.packages, valuesOf(cpus, "SocketId").size()) << c.name;
        EXPECT_EQ(c.cores, cores.size()) << c.name;
        EXPECT_EQ(c.efficient, efficient) << c.name;
    }
}

TEST(Captures, AgreeOnTheMemoryBlocks) {
    SKIP_WITHOUT_CAPTURES();
    const std::vector<Instance> memory = readInstances(scanCapture(Capture("lsmem/x86_64-16g"), "Memory"));
    ASSERT_EQ(1U, memory.size());
    EXPECT_EQ(std::to_string(std::uint64_t{16} << 30), valueOf(memory[0], "InstalledBytes"));
}

// The sum of "Size: 512 MB" and the like in the sections "Memory Device".
std::uint64_t moduleBytes(const std::string& text) {
    std::uint64_t sum = 0;
    bool inDevice = false;
    for (const std::string_view line : lines(text)) {
        if (!startsWith(line, "\t")) inDevice = line == "Memory Device";
        const std::vector<std::string_view> parts = words(line);
        if (!inDevice || parts.size() != 3 || parts[0] != "Size:") continue;
        const std::uint64_t unit = parts[2] == "GB" ? 1U << 30 : parts[2] == "MB" ? 1U << 20 : 1U << 10;
        sum += parseDecimal(parts[1]).value_or(0) * unit;
    }
    return sum;
}

TEST(Captures, AgreeOnTheMemoryModules) {
    SKIP_WITHOUT_CAPTURES();
    for (const char* name : {"ASRock-Single-Ryzen", "Dell-PowerEdge-R630-Dual-Xeon", "Lenovo-ThinkPad-T480",
                             "PE0400", "PE1650", "PE2650", "PE6600", "PE8450", "SuperMicro-X9DBL", "VMWare",
                             "dimension_4400", "latitude_D500", "opti"}) {
        const std::string path = std::string("smbios/") + name;
        const std::vector<Instance> memory = readInstances(scanCapture(Capture(path), "Memory"));
        ASSERT_EQ(1U, memory.size()) << name;
        EXPECT_EQ(std::to_string(moduleBytes(contentOf(path + ".dmidecode34.txt"))),
                  valueOf(memory[0], "InstalledBytes"))
            << name;
    }
}

TEST(Captures, AgreeOnDisksAndMounts) {
    SKIP_WITHOUT_CAPTURES();
    const Capture capture("lsblk/simple-lvm");
    std::map<std::string, std::string> disks;
    for (const Instance& disk : readInstances(scanCapture(capture, "Storage"))) {
        disks[valueOf(disk, "DeviceName")] = valueOf(disk, "Model");
    }
    EXPECT_EQ(
        (std::map<std::string, std::string>{
            {"nvme0n1", "KINGSTON SKC1000240G"}, {"sda", "KINGSTON SH103S3"}, {"sdb", "WDC WD800JD-00MS"}}),
        disks);
    std::map<std::string, std::string> mounts;
    for (const Instance& mount : readInstances(scanCapture(capture, "Logical Drive"))) {
        if (valueOf(mount, "Kind") == "Ram") continue;
        mounts[valueOf(mount, "MountPoint")] = valueOf(mount, "Device") + ' ' + valueOf(mount, "Disks");
    }
    EXPECT_EQ((std::map<std::string, std::string>{{"/", "/dev/sda4 sda"},
                                                  {"/boot", "/dev/sda2 sda"},
                                                  {"/boot/efi", "/dev/sda1 sda"},
                                                  {"/home", "/dev/nvme0n1p2 nvme0n1"},
                                                  {"/home/archive", "/dev/sdb1 sdb"},
                                                  {"/home/test", "/dev/nvme0n1p3 nvme0n1"}}),
              mounts);
}

TEST(Captures, AgreeOnTheDistributions) {
    SKIP_WITHOUT_CAPTURES();
    struct Case {
        const char* name;
        const char* id;
        const char* version;
    };
    const Case cases[] = {{"almalinux10", "almalinux", "10.0"},
                          {"alpine", "alpine", "3.23.2"},
                          {"arch", "arch", ""},
                          {"armbian", "debian", "10"},
                          {"buildroot", "buildroot", "2022.02"},
                          {"centos7", "centos", "7"},
                          {"coreos", "coreos", "899.15.0"},
                          {"fedora30", "fedora", "30"},
                          {"gentoo", "gentoo", ""},
                          {"opensuse15", "opensuse-leap", "15.2"},
                          {"raspbian8", "raspbian", "8"},
                          {"ubuntu14", "ubuntu", "14.04"}};
    for (const Case& c : cases) {
        const Capture capture(std::string("osrelease/") + c.name);
        const std::vector<Instance> systems = readInstances(scanCapture(capture, "Operating System"));
        ASSERT_EQ(1U, systems.size()) << c.name;
        EXPECT_EQ(c.id, valueOf(systems[0], "Id"));
        EXPECT_EQ(c.version, valueOf(systems[0], "VersionId"));
    }
}

}  // namespace
