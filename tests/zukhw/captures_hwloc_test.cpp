// What is read from captured processors against the trees that hwloc makes of them.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/test_machine.h"

namespace {

// What the tree has below one package.
struct TreePackage {
    std::string model;
    std::set<std::string> threads;                 // by the kernel's numbers
    std::map<std::string, std::uint64_t> counted;  // "Cores", and the bytes of caches by our names
};

// The text between a key and an end mark; empty when the key is not there.
std::string between(std::string_view line, std::string_view key, char end) {
    const std::size_t start = line.find(key);
    if (start == std::string_view::npos) return "";
    const std::string_view rest = line.substr(start + key.size());
    return std::string(rest.substr(0, rest.find(end)));
}

// "1280KiB" or "24MiB" in bytes.
std::uint64_t bytesOf(const std::string& size) {
    const std::size_t unit = size.find_first_not_of("0123456789");
    return parseDecimal(size.substr(0, unit)).value_or(0) << (size.compare(unit, 3, "MiB") == 0 ? 20U : 10U);
}

void addObject(std::string_view line, TreePackage* package) {
    static const std::map<std::string, std::string> kCaches = {{"L1dCache", "L1dCacheBytes"},
                                                               {"L1iCache", "L1iCacheBytes"},
                                                               {"L2Cache", "L2CacheBytes"},
                                                               {"L3Cache", "L3CacheBytes"}};
    const std::string object(words(line).at(0));
    const auto cache = kCaches.find(object);
    const std::string size =
        between(line, " size=", ' ').empty() ? between(line, "(size=", ' ') : between(line, " size=", ' ');
    if (cache != kCaches.end()) package->counted[cache->second] += bytesOf(size);
    if (object == "Core") ++package->counted["Cores"];
    if (object == "PU") package->threads.insert(between(line, "(P#", ')'));
}

// By the kernel's number of the package.
std::map<std::string, TreePackage> readTree(const std::string& text) {
    std::map<std::string, TreePackage> packages;
    TreePackage* current = nullptr;
    for (const std::string_view line : lines(text)) {
        if (startsWith(line, "depth 0:")) break;
        if (startsWith(trim(line), "Package ")) {
            const std::string number = between(line, "(P#", ' ').substr(0, between(line, "(P#", ')').size());
            current = &packages[number];
            current->model = cleanText(between(line, "CPUModel=\"", '"'));
        } else if (current != nullptr) {
            addObject(line, current);
        }
    }
    return packages;
}

TEST(HwlocCaptures, HaveThePackagesOfTheTree) {
    SKIP_WITHOUT_CAPTURES();
    for (const std::string& name : captureNames("hwloc")) {
        SCOPED_TRACE(name);
        const Capture capture(name);
        Machine machine = capture.machine();
        std::map<std::string, std::set<std::string>> threads;
        for (const Fields& cpu : collectInstances(machine, "Processor")) {
            if (cpu.at("Online") == "true") threads[valueOf(cpu, "SocketId")].insert(cpu.at("Index"));
        }
        const std::map<std::string, TreePackage> tree = readTree(captureText(name + ".console"));
        const std::vector<Fields> packages = collectInstances(machine, "PhysicalProcessor");
        EXPECT_EQ(tree.size(), packages.size());
        for (const Fields& package : packages) {
            const auto expected = tree.find(package.at("SocketId"));
            ASSERT_NE(tree.end(), expected) << package.at("SocketId");
            if (!expected->second.model.empty()) {
                EXPECT_EQ(expected->second.model, valueOf(package, "Model"));
            }
            EXPECT_EQ(expected->second.threads, threads[package.at("SocketId")]);
            EXPECT_EQ(std::to_string(expected->second.threads.size()), valueOf(package, "OnlineThreads"));
            for (const auto& [field, count] : expected->second.counted) {
                EXPECT_EQ(std::to_string(count), valueOf(package, field)) << field;
            }
        }
    }
}

// "CPU kind #0 efficiency 0 cpuset 0x000ff000"
TEST(HwlocCaptures, HaveTheKindsOfCoresOfTheTree) {
    SKIP_WITHOUT_CAPTURES();
    for (const std::string& name : captureNames("hwloc")) {
        SCOPED_TRACE(name);
        const std::string text = captureText(name + ".console");
        const bool isHybrid = text.find("CPU kind #1") != std::string::npos;
        const Capture capture(name);
        Machine machine = capture.machine();
        for (const Fields& cpu : collectInstances(machine, "Processor")) {
            std::string expected;
            for (const std::string_view line : lines(text)) {
                if (!isHybrid || !startsWith(line, "CPU kind #")) continue;
                const auto set = parseHex(line.substr(line.rfind(' '))).value();
                if ((set >> std::stoul(cpu.at("Index")) & 1U) != 0) {
                    expected = between(line, "efficiency ", ' ') == "0" ? "Efficiency" : "Performance";
                }
            }
            EXPECT_EQ(expected, valueOf(cpu, "CoreType")) << cpu.at("Index");
        }
    }
}

TEST(HwlocCaptures, HaveTheNodesOfTheTree) {
    SKIP_WITHOUT_CAPTURES();
    for (const std::string& name : captureNames("hwloc")) {
        const std::string text = captureText(name + ".console");
        const Capture capture(name);
        Machine machine = capture.machine();
        const std::vector<Fields> memory = collectInstances(machine, "Memory");
        const std::string found = memory.empty() ? "" : valueOf(memory[0], "NumaNodes");
        // Without a list of nodes the tool makes one up.
        const auto count = parseDecimal(trim(between(text, "Special depth -3:", 'N')));
        if (!found.empty()) {
            EXPECT_EQ(std::to_string(count.value_or(0)), found) << name;
        }
    }
}

}  // namespace
