// On the machine that the tests run on: what the scanner says of it against what its own tools say, where
// both claim to know.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/instance_reader.h"
#include "tests/zukhw/scanner_run.h"

namespace {

using nlohmann::json;

// The JSON that a command prints; null when it is not installed or fails.
json outputOf(const std::string& command) {
    const TemporaryFolder folder;
    const std::string file = folder.path() + "/out";
    const std::string line = command + " > " + file + " 2> /dev/null";
    if (std::system(line.c_str()) != 0) return nullptr;  // NOLINT(cert-env33-c): a fixed command
    return json::parse(readFile(file), nullptr, false);
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

TEST(LiveTools, LscpuNamesTheSameProcessors) {
    const json tool = outputOf("lscpu -J");
    if (!tool.is_object()) GTEST_SKIP() << "lscpu -J is not to be had here";
    std::map<std::string, std::string> fields;
    const std::function<void(const json&)> collect = [&](const json& rows) {
        for (const json& row : rows) {
            fields[row["field"]] = row["data"].is_string() ? row["data"].get<std::string>() : "";
            if (row.contains("children")) collect(row["children"]);
        }
    };
    collect(tool["lscpu"]);
    const std::vector<Instance> cpus = scanLive("Processor");
    EXPECT_EQ(fields["CPU(s):"], std::to_string(cpus.size()));
    EXPECT_EQ(fields["Model name:"], valueOf(cpus.at(0), "Model"));
    EXPECT_EQ(fields["CPU family:"], valueOf(cpus.at(0), "Family"));
    std::set<std::string> sockets;
    for (const Instance& cpu : cpus) sockets.insert(valueOf(cpu, "SocketId"));
    EXPECT_EQ(fields["Socket(s):"], std::to_string(sockets.size()));
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
