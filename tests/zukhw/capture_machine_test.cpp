// tools/capture_machine: a copy says what the machine says, but for what identifies it.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/documented_fields.h"
#include "tests/zukhw/edid_block.h"
#include "tests/zukhw/instance_reader.h"
#include "tests/zukhw/machine_tree.h"
#include "tests/zukhw/scanner_run.h"
#include "tests/zukhw/smbios_table.h"

namespace {

const std::string kUuidBytes("\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xaa\xbb\xcc\xdd\xee\xff", 16);
const std::string kDmi =
    structure(1, 1, std::string("\x01\x02\x00\x03", 4) + kUuidBytes, {"Maker", "Model", "SN-4711ABC"}) +
    structure(127, 2, "", {});
const std::string kEdid = edidBlock({{8, "\x1e\x6d"},
                                     {12, "\x39\x30\x01\x02"},
                                     {18, "\x01\x04"},
                                     {72, edidTextDescriptor(0xFC, "Panel 27")},
                                     {90, edidTextDescriptor(0xFF, "MON998877")}});

const std::string kMachine =
    "proc/cpuinfo: processor : 0\n"
    "proc/sys/kernel/hostname: lab-host\n"
    "etc/hosts: 127.0.1.1 lab-host.example.org lab-host\n"
    "etc/machine-id: 0123456789abcdef0fedcba987654321\n"
    "etc/passwd: root:x:0:0:root:/root:/bin/sh\n"
    "etc/shadow: root:$6$salt$secretsecretsecret:19000:0:99999:7:::\n"
    "sys/firmware/dmi/tables/DMI = " +
    hexOf(kDmi) +
    "\n"
    "sys/class/dmi/id/product_serial: SN-4711ABC\n"
    "sys/class/dmi/id/product_uuid: 00112233-4455-6677-8899-aabbccddeeff\n"
    "sys/class/net/eth0 -> ../../devices/pci0000:00/0000:00:03.0/net/eth0\n"
    "sys/devices/pci0000:00/0000:00:03.0/net/eth0/address: 52:54:00:12:34:56\n"
    "sys/devices/pci0000:00/0000:00:03.0/net/eth0/ifindex: 2\n"
    "sys/devices/pci0000:00/0000:00:03.0/net/eth0/type: 1\n"
    "proc/net/if_inet6: fe80000000000000505400fffe123456 02 40 20 80 eth0\n"
    "sys/class/drm/card0-DP-1/status: connected\n"
    "sys/class/drm/card0-DP-1/edid = " +
    hexOf(kEdid) +
    "\n"
    "sys/block/sda/size: 2048\n"
    "sys/block/sda/dev: 8:0\n"
    "sys/block/sda/removable: 0\n"
    "sys/block/sda/device/vendor: ATA\n"
    "sys/block/sda/device/model: Disk\n"
    "sys/block/sda/device/wwid: naa.5000c500a1b2c3d4\n"
    "sys/block/sda/device/vpd_pg80 = 00 80 00 08 5a 44 31 32 33 34 35 36\n"
    "run/udev/data/b8:0: E:ID_SERIAL_SHORT=ZD123456\n"
    "usr/lib/os-release: NAME=Thing\n"
    "etc/os-release -> ../usr/lib/os-release\n";

// In every form in which they stand in the machine's files.
const std::string kSecrets[] = {"SN-4711ABC",
                                "00112233-4455-6677-8899-aabbccddeeff",
                                "0123456789abcdef0fedcba987654321",
                                "52:54:00:12:34:56",
                                "505400fffe123456",
                                "5000c500a1b2c3d4",
                                "ZD123456",
                                "MON998877",
                                "lab-host",
                                "secretsecret",
                                kUuidBytes};

class CaptureMachine : public testing::Test {
  protected:
    void SetUp() override {
        if (shell("python3 -c 'import lzma' && strace -V").status != 0) {
            GTEST_SKIP() << "capturing needs python3 and strace";
        }
    }

    // Makes the copy and unpacks it; gives its root.
    std::string capture(const std::string& options) {
        const std::string tool = quoted(std::string(ZUK_SOURCE_DIR) + "/tools/capture_machine");
        const std::string command = "ASAN_OPTIONS=detect_leaks=0 " + tool + ' ' +
                                    quoted(std::string(ZUK_BINARY_DIR) + "/bin/zukhw") + ' ' +
                                    quoted(folder.path() + "/copy") + options;
        const ShellResult made = shell(command);
        if (made.status != 0) throw std::runtime_error(made.err);
        const ShellResult unpacked =
            shell("tar -xf " + quoted(folder.path() + "/copy.tar.xz") + " -C " + quoted(folder.path()));
        if (unpacked.status != 0) throw std::runtime_error(unpacked.err);
        return folder.path() + "/copy";
    }

    // Of the groups that the descriptor names.
    std::vector<Instance> scan(const std::string& root) const {
        const std::string descriptor = readFile(folder.path() + "/copy.case");
        const std::size_t begin = descriptor.find("groups: ") + 8;
        std::vector<std::string> groups;
        for (const std::string_view group :
             split(std::string_view(descriptor).substr(begin, descriptor.find('\n', begin) - begin), ','))
            groups.emplace_back(trim(group));
        const std::string output = folder.path() + "/out.xml";
        std::vector<std::string> arguments = {"-c", folder.file("config.xml", configFor(groups)), "-o",
                                              output};
        if (!root.empty()) arguments.insert(arguments.end(), {"--root", root});
        const ScannerRun run = runScanner(arguments);
        if (run.status != 0) throw std::runtime_error(run.errors);
        return readInstances(readFile(output));
    }

    std::string plant() {
        std::string root = folder.path() + "/root";
        std::filesystem::create_directory(root);
        plantMachine(kMachine, root);
        return root;
    }

    TemporaryFolder folder;
};

// A letter for every letter and a digit for every digit.
std::string shapeOf(std::string text) {
    for (char& c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) c = 'x';
    }
    return text;
}

TEST_F(CaptureMachine, HoldsNothingThatIdentifiesTheMachine) {
    const std::string copy = capture(" --root " + quoted(plant()));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(copy)) {
        const bool file = entry.is_regular_file() && !entry.is_symlink();
        const std::string all = entry.path().string() + '\n' + (file ? readFile(entry.path().string()) : "");
        for (const std::string& secret : kSecrets) {
            EXPECT_EQ(std::string::npos, all.find(secret)) << entry.path() << ": " << secret;
        }
    }
}

TEST_F(CaptureMachine, SaysTheSameAsTheMachineButForWhatIdentifiesIt) {
    const std::string root = plant();
    const std::string copy = capture(" --root " + quoted(root));
    const std::vector<Instance> before = scan(root);
    const std::vector<Instance> after = scan(copy);
    ASSERT_EQ(before.size(), after.size());
    std::size_t changed = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        ASSERT_EQ(before[i].group, after[i].group);
        ASSERT_EQ(before[i].fields.size(), after[i].fields.size()) << before[i].group;
        for (std::size_t k = 0; k < before[i].fields.size(); ++k) {
            const auto& [field, value] = before[i].fields[k];
            EXPECT_EQ(field, after[i].fields[k].first);
            static const std::set<std::string> kOtherShape = {"Edid", "SerialCode", "TableSha256", "Address"};
            if (kOtherShape.count(field) != 0) continue;
            EXPECT_EQ(shapeOf(value), shapeOf(after[i].fields[k].second)) << before[i].group << ' ' << field;
            changed += value != after[i].fields[k].second ? 1 : 0;
        }
    }
    EXPECT_GT(changed, 10U);
}

TEST_F(CaptureMachine, ReplacesTheSameByTheSame) {
    const std::string copy = capture(" --root " + quoted(plant()));
    std::map<std::string, std::set<std::string>> values;
    for (const Instance& instance : scan(copy)) {
        for (const auto& [field, value] : instance.fields) {
            values[field].insert(value);
            values[instance.group + ' ' + field].insert(value);
        }
    }
    EXPECT_EQ(1U, values["HostName"].size());
    EXPECT_EQ(1U, values["MachineId"].size());
    EXPECT_EQ(1U, values["MacAddress"].size());
    EXPECT_EQ(values["Uuid"], values["SystemUuid"]);
    // The disk's page, and udev's words for it.
    EXPECT_EQ("E:ID_SERIAL_SHORT=" + *values["Storage SerialNumber"].begin() + '\n',
              readFile(copy + "/run/udev/data/b8:0"));
    EXPECT_EQ(std::set<std::string>{"true"}, values["ChecksumValid"]);
}

TEST_F(CaptureMachine, TakesTheGroupsThatAreAskedFor) {
    const std::string copy = capture(" --root " + quoted(plant()) + " 'Operating System'");
    EXPECT_TRUE(std::filesystem::exists(copy + "/etc/os-release"));
    EXPECT_FALSE(std::filesystem::exists(copy + "/etc/shadow"));
    EXPECT_FALSE(std::filesystem::exists(copy + "/sys/block/sda"));
}

// What only the running system tells, or time changes between the copy and the scan.
bool isOfTheRunningSystem(const std::string& group, const std::string& field) {
    static const std::map<std::string, std::set<std::string>> kFields = {
        {"OperatingSystem", {"InstallDate", "InstallDateSource", "CLibrary"}},
        {"IPAddress", {"*"}},
        {"NetworkAdapter", {"Kind", "PermanentMacAddress", "FirmwareVersion"}},
        {"LogicalDrive", {"*"}},
        {"UNIXSystemParams", {"ClockTicksPerSecond"}},
        {"Regional", {"FirstDayOfWeek", "MeasurementSystem", "PaperSize"}},
        {"Processor", {"BaseMHz"}},
        {"ServiceInfo", {"*"}},
        {"VirtualMachine", {"*"}},
        {"HostComponentID", {"*"}},
        {"IPv6Address", {"Address", "Network"}},
    };
    const auto found = kFields.find(group);
    return found != kFields.end() && (found->second.count("*") != 0 || found->second.count(field) != 0);
}

// A line for each value that a copy of this machine has to give as well.
std::vector<std::string> valuesToKeep(const std::vector<Instance>& instances) {
    const DocumentedFields documented = readDocumentedFields();
    std::vector<std::string> values;
    for (const Instance& instance : instances) {
        for (const auto& [field, value] : instance.fields) {
            bool kept = !isOfTheRunningSystem(instance.group, field);
            for (const DocumentedField& row : documented.at(instance.group)) {
                if (row.name == field && row.isVolatile) kept = false;
            }
            if (kept) values.push_back(instance.group + ' ' + field + ' ' + shapeOf(value));
        }
    }
    return values;
}

TEST_F(CaptureMachine, CopiesTheRunningMachine) {
    const std::string copy = capture("");
    EXPECT_EQ(valuesToKeep(scan("")), valuesToKeep(scan(copy)));
}

}  // namespace
