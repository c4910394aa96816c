#include "scanners/zukhw/cpu_info.h"

#include <optional>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

std::optional<unsigned> asCpu(std::optional<std::string_view> text) {
    const auto number = text ? parseDecimal(*text) : std::nullopt;
    if (!number || *number > kMaxListed) return std::nullopt;
    return static_cast<unsigned>(*number);
}

// "processor : 3"; on s390 "cpu number : 3", or one line "processor 3: version = FF, machine = 2964".
std::optional<unsigned> cpuOfBlock(std::string_view block) {
    for (const std::string_view key : {"processor", "cpu number"}) {
        if (const auto cpu = asCpu(findValue(block, key, ':'))) return cpu;
    }
    return std::nullopt;
}

std::optional<unsigned> cpuOfLine(std::string_view line) {
    constexpr std::string_view kKey = "processor ";
    if (!startsWith(line, kKey)) return std::nullopt;
    return asCpu(line.substr(kKey.size(), line.find(':') - kKey.size()));
}

}  // namespace

CpuInfo::CpuInfo(Machine& machine) {
    text_ = machine.read("proc/cpuinfo", Machine::kTable).value_or("");
    std::string_view rest(text_);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find("\n\n"), rest.size());
        addBlock(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 2, rest.size()));
    }
}

void CpuInfo::addBlock(std::string_view block) {
    const std::optional<unsigned> cpu = cpuOfBlock(block);
    if (cpu) {
        blocks_.emplace(*cpu, block);
        return;
    }
    common_.push_back(block);
    for (const std::string_view line : lines(block)) {
        if (const auto cpuHere = cpuOfLine(line)) blocks_.emplace(*cpuHere, line);
    }
}

std::string_view CpuInfo::value(unsigned cpu, std::initializer_list<std::string_view> keys) const {
    const auto own = blocks_.find(cpu);
    for (const std::string_view key : keys) {
        if (own != blocks_.end()) {
            if (const auto value = findValue(own->second, key, ':')) return *value;
        }
        for (const std::string_view block : common_) {
            if (const auto value = findValue(block, key, ':')) return *value;
        }
    }
    return {};
}

// "48 bits physical, 48 bits virtual"
CpuAddressBits CpuInfo::addressBits(unsigned cpu) const {
    const std::vector<std::string_view> parts = words(value(cpu, {"address sizes", "Address Sizes"}));
    if (parts.size() != 6 || parts[1] != "bits" || parts[2] != "physical," || parts[5] != "virtual")
        return {};
    return {parseDecimal(parts[0]), parseDecimal(parts[3])};
}

std::vector<unsigned> CpuInfo::cpus() const {
    std::vector<unsigned> cpus;
    for (const auto& [cpu, block] : blocks_) cpus.push_back(cpu);
    return cpus;
}
