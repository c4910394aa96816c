// What is read from captured processors against what lscpu says of them.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "tests/support/shell.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/test_machine.h"

namespace {

using Texts = std::set<std::string>;

// lscpu's text and our two groups. A machine with cores of several kinds has a block of lines for each.
struct LscpuCapture {
    explicit LscpuCapture(const std::string& name)
        : files(name), machine(files.machine()), text(captureText(name + ".txt")) {
        // Captures that come without its text: the tool can look at a copy itself.
        if (text.empty()) text = shell("lscpu --sysroot " + quoted(files.root())).out;
        cpus = collectInstances(machine, "Processor");
        sockets = collectInstances(machine, "PhysicalProcessor");
    }

    // All values of the lines "key: value" up to the first empty one.
    Texts told(std::string_view key) const {
        Texts values;
        for (const std::string_view line : lines(text)) {
            if (line.empty()) break;
            const std::size_t colon = line.find(':');
            if (colon != std::string_view::npos && line.substr(0, colon) == key) {
                values.insert(cleanText(line.substr(colon + 1)));
            }
        }
        return values;
    }

    Capture files;
    Machine machine;
    std::string text;
    std::vector<Fields> cpus;
    std::vector<Fields> sockets;
};

Texts valuesOf(const std::vector<Fields>& instances, const char* field) {
    Texts values;
    for (const Fields& instance : instances) values.insert(valueOf(instance, field));
    values.erase("");
    return values;
}

Texts upTo(char end, const Texts& texts) {
    Texts cut;
    for (const std::string& text : texts) cut.insert(text.substr(0, text.find(end)));
    return cut;
}

class LscpuCaptures : public testing::Test {
  protected:
    void SetUp() override { SKIP_WITHOUT_CAPTURES(); }

    template <typename Check>
    static void forEach(Check check) {
        for (const std::string& name : captureNames("lscpu")) {
            SCOPED_TRACE(name);
            check(LscpuCapture(name));
        }
        for (const std::string& name : captureNames("sysroot")) {
            const LscpuCapture capture(name);
            SCOPED_TRACE(name);
            if (!capture.text.empty()) check(capture);
        }
    }
};

TEST_F(LscpuCaptures, HaveTheSameModels) {
    static const std::map<std::string, std::string> kMakers = {
        {"GenuineIntel", "Intel"}, {"AuthenticAMD", "AMD"}, {"ARM", "ARM"}};
    forEach([](const LscpuCapture& capture) {
        EXPECT_EQ(capture.told("CPU(s)"), Texts{std::to_string(capture.cpus.size())});
        EXPECT_EQ(capture.told("Model name"), valuesOf(capture.cpus, "Model"));
        Texts makers;
        for (const std::string& id : capture.told("Vendor ID")) makers.insert(kMakers.at(id));
        EXPECT_EQ(makers, valuesOf(capture.cpus, "Manufacturer"));
        Texts families = capture.told("CPU family");
        families.erase("Loongson-64bit");  // our field is a number
        EXPECT_EQ(families, valuesOf(capture.cpus, "Family"));
        // Elsewhere the tool's "Model" is something else: ARM's variant, LoongArch's revision.
        if (!families.empty()) {
            EXPECT_EQ(capture.told("Model"), valuesOf(capture.cpus, "ModelNumber"));
        }
        EXPECT_EQ(capture.told("Stepping"), valuesOf(capture.cpus, "Stepping"));
        const Texts microcode = capture.told("Microcode version");  // new versions of the tool tell it
        if (!microcode.empty()) {
            EXPECT_EQ(microcode, valuesOf(capture.cpus, "MicrocodeVersion"));
        }
    });
}

TEST_F(LscpuCaptures, HaveTheSameClocks) {
    forEach([](const LscpuCapture& capture) {
        EXPECT_EQ(upTo('.', capture.told("CPU max MHz")), valuesOf(capture.cpus, "MaxMHz"));
        EXPECT_EQ(upTo('.', capture.told("CPU min MHz")), valuesOf(capture.cpus, "MinMHz"));
        const Texts mips = valuesOf(capture.cpus, "BogoMips");  // the tool tells one CPU's
        for (const std::string& told : capture.told("BogoMIPS")) EXPECT_EQ(1U, mips.count(told)) << told;
    });
}

TEST_F(LscpuCaptures, HaveTheSameFeatures) {
    forEach([](const LscpuCapture& capture) {
        Texts flags;
        for (const std::string& told : capture.told("Flags")) {
            for (const std::string_view flag : words(told)) flags.emplace(flag);
        }
        Texts found;
        for (const std::string& list : valuesOf(capture.sockets, "Flags")) {
            for (const std::string_view flag : words(list)) found.emplace(flag);
        }
        if (!flags.empty()) {
            EXPECT_EQ(flags, found);
        }
        EXPECT_EQ(capture.told("Virtualization"), valuesOf(capture.sockets, "HardwareVirtualization"));
        Texts sizes;
        for (const Fields& cpu : capture.cpus) {
            if (cpu.count("PhysicalAddressBits") == 0) continue;
            sizes.insert(valueOf(cpu, "PhysicalAddressBits") + " bits physical, " +
                         valueOf(cpu, "VirtualAddressBits") + " bits virtual");
        }
        EXPECT_EQ(capture.told("Address sizes"), sizes);
        if (capture.told("CPU op-mode(s)") == Texts{"32-bit, 64-bit"}) {
            EXPECT_EQ(Texts{"true"}, valuesOf(capture.sockets, "Is64Bit"));
        }
    });
}

// "64 KiB (2 instances)" in bytes.
std::uint64_t bytesOf(const std::string& text) {
    const std::vector<std::string_view> parts = words(text);
    const std::uint64_t unit = parts.at(1) == "MiB" ? 1U << 20 : 1U << 10;
    return parseDecimal(parts[0]).value_or(0) * unit;
}

TEST_F(LscpuCaptures, HaveTheSameCaches) {
    static constexpr std::pair<const char*, const char*> kCaches[] = {{"L1d cache", "L1dCacheBytes"},
                                                                      {"L1i cache", "L1iCacheBytes"},
                                                                      {"L2 cache", "L2CacheBytes"},
                                                                      {"L2d cache", "L2CacheBytes"},
                                                                      {"L3 cache", "L3CacheBytes"}};
    forEach([](const LscpuCapture& capture) {
        for (const auto& [key, field] : kCaches) {
            for (const std::string& told : capture.told(key)) {
                std::uint64_t sum = 0;
                for (const Fields& socket : capture.sockets)
                    sum += parseDecimal(valueOf(socket, field)).value_or(0);
                EXPECT_EQ(bytesOf(told), sum) << key;
            }
        }
    });
}

// The tool writes a semicolon for the kernel's first colon, and leaves the others out.
std::string withoutColons(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == ':' || c == ';'; }),
               text.end());
    return text;
}

TEST_F(LscpuCaptures, HaveTheSameVulnerabilities) {
    forEach([](const LscpuCapture& capture) {
        const std::string list = withoutColons(valueOf(capture.sockets.at(0), "Vulnerabilities"));
        for (const std::string_view line : lines(capture.text)) {
            constexpr std::string_view kStart = "Vulnerability ";
            if (line.empty()) break;
            if (!startsWith(line, kStart)) continue;
            const std::size_t colon = line.find(':');
            std::string name = toLower(line.substr(kStart.size(), colon - kStart.size()));
            std::replace(name.begin(), name.end(), ' ', '_');
            const std::string status = withoutColons(cleanText(line.substr(colon + 1)));
            EXPECT_NE(std::string::npos, list.find(name + '=' + status)) << line << "\n" << list;
        }
    });
}

// The rows "CPU,Core,Socket,Node,,caches" of the first table; -1 for what is empty.
std::vector<std::vector<int>> rowsOf(const std::string& text) {
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

TEST_F(LscpuCaptures, HaveTheSameCoresSocketsAndNodes) {
    forEach([](const LscpuCapture& capture) {
        const std::vector<std::vector<int>> rows = rowsOf(capture.text);
        if (rows.empty()) return;  // the tool looked at the copy itself
        ASSERT_EQ(rows.size(), capture.cpus.size());
        // The tool numbers cores and sockets anew: what must agree is which CPUs have one in common.
        std::map<std::string, std::set<int>> sockets;
        std::map<std::string, std::set<int>> cores;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const Fields& cpu = capture.cpus[i];
            EXPECT_EQ(std::to_string(rows[i][0]), valueOf(cpu, "Index"));
            EXPECT_EQ(rows[i][3] < 0 ? "" : std::to_string(rows[i][3]), valueOf(cpu, "NumaNode"));
            if (cpu.count("SocketId") == 0) continue;
            sockets[valueOf(cpu, "SocketId")].insert(rows[i][2]);
            cores[valueOf(cpu, "SocketId") + '/' + valueOf(cpu, "NumaNode") + '/' + valueOf(cpu, "CoreId")]
                .insert(rows[i][1]);
        }
        for (const auto& [socket, numbers] : sockets) EXPECT_EQ(1U, numbers.size()) << socket;
        for (const auto& [core, numbers] : cores) EXPECT_EQ(1U, numbers.size()) << core;
    });
}

// With cores of several kinds the tool counts the sockets that hold each, and it takes the two cores of a
// module of AMD's family 15h for threads.
TEST_F(LscpuCaptures, HaveAsManySocketsCoresAndThreads) {
    forEach([](const LscpuCapture& capture) {
        const bool hasModules = capture.told("CPU family") == Texts{"21"};
        if (hasModules || capture.told("Model name").size() > 1) return;
        EXPECT_EQ(capture.told("Socket(s)"), Texts{std::to_string(capture.sockets.size())});
        EXPECT_EQ(capture.told("Core(s) per socket"), valuesOf(capture.sockets, "Cores"));
        EXPECT_EQ(capture.told("Thread(s) per core"), valuesOf(capture.sockets, "ThreadsPerCore"));
    });
}

}  // namespace
