// On the machine that the tests run on: what the scanner says of it against what its own tools say, where
// both claim to know.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/instance_reader.h"
#include "tests/zukhw/scanner_run.h"

namespace {

using nlohmann::json;

// The JSON that a command prints; null when it is not installed or fails.
json outputOf(const std::string& command) {
    const ShellResult result = shell(command);
    return result.status == 0 ? json::parse(result.out, nullptr, false) : nullptr;
}

std::vector<Instance> scanLive(const std::string& group) {
    const TemporaryFolder folder;
    const std::string output = folder.path() + "/out.xml";
    const ScannerRun run = runScanner({"-c", folder.file("config.xml", configFor({group})), "-o", output});
    if (run.status != 0) throw std::runtime_error(run.errors);
    return readInstances(readFile(output));
}

std::string valueOf(const Instance& instance, const char* field) {
    const std::string* value = instance.find(field);
    return value != nullptr ? *value : "";
}

// lscpu's fields by their names, those of caches and mitigations below others, too.
std::map<std::string, std::string> lscpuFields() {
    std::map<std::string, std::string> fields;
    const std::function<void(const json&)> collect = [&](const json& rows) {
        for (const json& row : rows) {
            fields[row["field"]] = row["data"].is_string() ? row["data"].get<std::string>() : "";
            if (row.contains("children")) collect(row["children"]);
        }
    };
    const json tool = outputOf("lscpu -J -B");
    if (tool.is_object()) collect(tool["lscpu"]);
    return fields;
}

TEST(LiveTools, LscpuNamesTheSameProcessors) {
    std::map<std::string, std::string> fields = lscpuFields();
    if (fields.empty()) GTEST_SKIP() << "lscpu -J is not to be had here";
    const std::vector<Instance> cpus = scanLive("Processor");
    EXPECT_EQ(fields["CPU(s):"], std::to_string(cpus.size()));
    EXPECT_EQ(fields["Model name:"], valueOf(cpus.at(0), "Model"));
    EXPECT_EQ(fields["CPU family:"], valueOf(cpus.at(0), "Family"));
    EXPECT_EQ(fields["Stepping:"], valueOf(cpus.at(0), "Stepping"));
    EXPECT_EQ(fields["BogoMIPS:"], valueOf(cpus.at(0), "BogoMips"));
    std::set<std::string> sockets;
    for (const Instance& cpu : cpus) sockets.insert(valueOf(cpu, "SocketId"));
    EXPECT_EQ(fields["Socket(s):"], std::to_string(sockets.size()));
}

TEST(LiveTools, LscpuNamesTheSameCachesAndFeatures) {
    std::map<std::string, std::string> fields = lscpuFields();
    if (fields.empty()) GTEST_SKIP() << "lscpu -J is not to be had here";
    const std::vector<Instance> processors = scanLive("PhysicalProcessor");
    for (const std::string level : {"L1d", "L1i", "L2", "L3"}) {
        std::uint64_t sum = 0;  // the tool tells that of all sockets: "98304 (2 instances)"
        for (const Instance& processor : processors) {
            const std::string bytes = valueOf(processor, (level + "CacheBytes").c_str());
            sum += bytes.empty() ? 0 : std::stoull(bytes);
        }
        const std::string told = fields[level + " cache:"];
        EXPECT_EQ(told.empty() ? 0 : std::stoull(told), sum) << level;
    }
    const std::vector<std::string_view> told = words(fields["Flags:"]);
    const std::string found = valueOf(processors.at(0), "Flags");
    const std::vector<std::string_view> flags = words(found);
    EXPECT_EQ(std::set<std::string_view>(told.begin(), told.end()),
              std::set<std::string_view>(flags.begin(), flags.end()));
}

TEST(LiveTools, LsblkListsTheSameDisks) {
    const json tool = outputOf("lsblk -J -b -d -o NAME,SIZE,TYPE,RO,RM,LOG-SEC -e 1,7,43,252,253,9");
    if (!tool.is_object()) GTEST_SKIP() << "lsblk -J is not to be had here";
    std::map<std::string, std::string> expected;
    for (const json& device : tool["blockdevices"]) {
        if (device["type"] == "disk" && device["size"] != 0 &&
            device["name"].get<std::string>().rfind("zram") != 0) {
            expected[device["name"]] = std::to_string(device["size"].get<std::uint64_t>());
        }
    }
    std::map<std::string, std::string> found;
    for (const Instance& disk : scanLive("Storage")) {
        if (valueOf(disk, "Kind") == "Disk") found[valueOf(disk, "DeviceName")] = valueOf(disk, "SizeBytes");
    }
    EXPECT_EQ(expected, found);
}

// A value of the tool's as we would write it; empty when it does not know.
std::string textOf(const json& value) {
    if (value.is_string()) return cleanText(value.get<std::string>());
    if (value.is_boolean()) return value.get<bool>() ? "true" : "false";
    return value.is_number_unsigned() ? std::to_string(value.get<std::uint64_t>()) : "";
}

// Compares where both know.
void expectSame(const json& device, const char* key, const Instance& instance, const char* field) {
    const std::string told = textOf(device[key]);
    const std::string found = valueOf(instance, field);
    if (!told.empty() && !found.empty()) {
        EXPECT_EQ(told, found) << device["name"] << ' ' << field;
    }
}

TEST(LiveTools, LsblkSaysTheSameOfDisksAndVolumes) {
    const json tool = outputOf("lsblk -J -b -O");
    if (!tool.is_object()) GTEST_SKIP() << "lsblk -J is not to be had here";
    std::map<std::string, std::vector<Instance>> found;
    for (const char* group : {"Storage", "Disk Partition", "Partition"}) {
        for (const Instance& instance : scanLive(group))
            found[valueOf(instance, "DeviceName")].push_back(instance);
    }
    static constexpr std::pair<const char*, const char*> kFields[] = {{"size", "SizeBytes"},
                                                                      {"ro", "ReadOnly"},
                                                                      {"rm", "Removable"},
                                                                      {"log-sec", "LogicalBlockBytes"},
                                                                      {"phy-sec", "PhysicalBlockBytes"},
                                                                      {"model", "Model"},
                                                                      {"serial", "SerialNumber"},
                                                                      {"state", "State"},
                                                                      {"hctl", "BusAddress"},
                                                                      {"fstype", "FileSystem"},
                                                                      {"label", "Label"},
                                                                      {"uuid", "Uuid"},
                                                                      {"partuuid", "PartitionUuid"},
                                                                      {"partlabel", "PartitionLabel"},
                                                                      {"parttype", "TypeId"},
                                                                      {"pkname", "Disk"},
                                                                      {"mountpoint", "MountPoint"}};
    const std::function<void(const json&)> compare = [&](const json& devices) {
        for (const json& device : devices) {
            for (const Instance& instance : found[device["kname"]]) {
                for (const auto& [key, field] : kFields) expectSame(device, key, instance, field);
            }
            if (device.contains("children")) compare(device["children"]);
        }
    };
    compare(tool["blockdevices"]);
}

TEST(LiveTools, IpListsTheSameAddressesAndLinks) {
    const json tool = outputOf("ip -j addr");
    if (!tool.is_array()) GTEST_SKIP() << "ip -j is not to be had here";
    std::vector<std::string> addresses;
    std::map<std::string, std::string> links;
    for (const json& link : tool) {
        const std::string name = link["ifname"];
        links[name] =
            std::to_string(link["ifindex"].get<int>()) + ' ' + std::to_string(link["mtu"].get<int>());
        for (const json& info : link["addr_info"]) {
            if (info["family"] != "inet") continue;
            const int length = info["prefixlen"];
            addresses.push_back(name + ' ' + info["local"].get<std::string>() + '/' + std::to_string(length) +
                                ' ' + info["scope"].get<std::string>() + ' ' + info.value("broadcast", ""));
        }
    }
    std::vector<std::string> foundAddresses;
    for (const Instance& address : scanLive("IP Address")) {
        foundAddresses.push_back(valueOf(address, "InterfaceName") + ' ' + valueOf(address, "Address") + '/' +
                                 valueOf(address, "PrefixLength") + ' ' + valueOf(address, "Scope") + ' ' +
                                 valueOf(address, "Broadcast"));
    }
    std::map<std::string, std::string> foundLinks;
    for (const Instance& link : scanLive("Network Adapter")) {
        foundLinks[valueOf(link, "InterfaceName")] =
            valueOf(link, "InterfaceIndex") + ' ' + valueOf(link, "Mtu");
    }
    EXPECT_EQ(addresses, foundAddresses);
    EXPECT_EQ(links, foundLinks);
}

TEST(LiveTools, IpSaysTheSameOfLinksAndTheirIpv6Addresses) {
    const json tool = outputOf("ip -j addr");
    if (!tool.is_array()) GTEST_SKIP() << "ip -j is not to be had here";
    std::map<std::string, Instance> links;
    for (const Instance& link : scanLive("Network Adapter")) links[valueOf(link, "InterfaceName")] = link;
    std::set<std::string> expected;
    for (const json& told : tool) {
        const std::string name = told["ifname"];
        ASSERT_EQ(1U, links.count(name));
        const std::string mac = told.value("address", "");
        const std::string found = valueOf(links[name], "MacAddress");
        if (!found.empty()) {
            EXPECT_EQ(mac, found);
        }
        const std::string state = toLower(told.value("operstate", ""));
        EXPECT_EQ(state == "unknown" ? "" : state, valueOf(links[name], "OperState")) << name;
        for (const json& info : told["addr_info"]) {
            if (info["family"] != "inet6") continue;
            expected.insert(name + ' ' + info["local"].get<std::string>() + '/' +
                            std::to_string(info["prefixlen"].get<int>()) + ' ' +
                            info["scope"].get<std::string>());
        }
    }
    std::set<std::string> addresses;
    for (const Instance& address : scanLive("IPv6 Address")) {
        addresses.insert(valueOf(address, "InterfaceName") + ' ' + valueOf(address, "Address") + '/' +
                         valueOf(address, "PrefixLength") + ' ' + valueOf(address, "Scope"));
    }
    EXPECT_EQ(expected, addresses);
}

// "adduser 3.134 all 686 installed": the size is in kilobytes.
TEST(LiveTools, DpkgQueryListsTheSamePackages) {
    const ShellResult tool = shell(
        "dpkg-query -W -f '${Package} ${Version} ${Architecture} ${Installed-Size} ${db:Status-Status}\\n'");
    if (tool.status != 0) GTEST_SKIP() << "dpkg-query is not to be had here";
    std::multiset<std::string> expected;
    for (const std::string_view line : lines(tool.out)) {
        const std::vector<std::string_view> cells = split(line, ' ');
        ASSERT_EQ(5U, cells.size()) << line;
        if (cells[4] != "installed") continue;
        const std::string bytes =
            cells[3].empty() ? "" : std::to_string(std::stoull(std::string(cells[3])) * 1024);
        expected.insert(std::string(cells[0]) + ' ' + std::string(cells[1]) + ' ' + std::string(cells[2]) +
                        ' ' + bytes);
    }
    std::multiset<std::string> found;
    for (const Instance& package : scanLive("Software Packages")) {
        if (valueOf(package, "Manager") != "dpkg") continue;
        found.insert(valueOf(package, "Name") + ' ' + valueOf(package, "Version") + ' ' +
                     valueOf(package, "Architecture") + ' ' + valueOf(package, "InstalledBytes"));
    }
    EXPECT_EQ(expected, found);
}

// 0000:00:01.0 "ffff" "1af4" "1045" -r01 -p00 "1af4" "1045"
TEST(LiveTools, LspciListsTheSameFunctions) {
    const ShellResult tool = shell("lspci -Dnmm");
    if (tool.status != 0) GTEST_SKIP() << "lspci is not to be had here";
    std::vector<std::string> expected;
    for (const std::string_view line : lines(tool.out)) {
        std::string function;
        std::string revision = "00";  // what it does not print
        for (const std::string_view word : words(line)) {
            if (startsWith(word, "-r")) revision = word.substr(2);
            if (startsWith(word, "-")) continue;
            std::string text(word);
            text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
            if (!text.empty()) function += text + ' ';
        }
        expected.push_back(function + revision);
    }
    std::vector<std::string> found;
    for (const Instance& device : scanLive("PCI Device")) {
        std::string function =
            valueOf(device, "Address") + ' ' + valueOf(device, "ClassCode").substr(0, 4) + ' ';
        for (const char* field : {"VendorId", "DeviceId", "SubsystemVendorId", "SubsystemDeviceId"}) {
            const std::string id = valueOf(device, field);
            if (!id.empty()) function += id + ' ';
        }
        found.push_back(function + valueOf(device, "Revision"));
    }
    EXPECT_EQ(expected, found);
}

// "dbus.service static -". Templates are no services here.
TEST(LiveTools, SystemctlListsTheSameUnits) {
    const ShellResult tool = shell("systemctl --root=/ list-unit-files -t service --no-legend --no-pager");
    if (tool.status != 0) GTEST_SKIP() << "systemctl is not to be had here";
    static const std::set<std::string> kModes = {"enabled", "disabled", "static",
                                                 "masked",  "alias",    "generated"};
    std::map<std::string, std::string> found;
    for (const Instance& service : scanLive("Service Info")) {
        found[valueOf(service, "Name")] = toLower(valueOf(service, "StartMode"));
    }
    for (const std::string_view line : lines(tool.out)) {
        const std::vector<std::string_view> cells = words(line);
        ASSERT_LE(2U, cells.size()) << line;
        const std::string mode(cells[1]);
        if (cells[0].find("@.") != std::string_view::npos || kModes.count(mode) == 0) continue;
        EXPECT_EQ(mode, found[std::string(cells[0])]) << cells[0];
    }
}

TEST(LiveTools, FindmntListsTheSameFileSystems) {
    const json tool = outputOf("findmnt -J -l -b --real -o TARGET,SOURCE,FSTYPE,SIZE");
    if (!tool.is_object()) GTEST_SKIP() << "findmnt -J is not to be had here";
    std::map<std::string, Instance> found;
    for (const Instance& drive : scanLive("Logical Drive")) found[valueOf(drive, "MountPoint")] = drive;
    for (const json& mount : tool["filesystems"]) {
        if (mount["source"].is_null() || mount["source"].get<std::string>().find('[') != std::string::npos)
            continue;
        const auto drive = found.find(mount["target"]);
        if (drive == found.end()) continue;  // mounted a second time
        EXPECT_EQ(mount["fstype"], valueOf(drive->second, "FileSystem")) << mount;
        if (mount["size"].is_number()) {
            EXPECT_EQ(std::to_string(mount["size"].get<std::uint64_t>()), valueOf(drive->second, "SizeBytes"))
                << mount;
        }
    }
    EXPECT_EQ(1U, found.count("/"));
}

}  // namespace
