// Group "Memory": one instance. What is installed comes from the firmware where it can be believed, what is
// in use from /proc/meminfo.
#include <algorithm>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_tree.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/meminfo.h"
#include "scanners/zukhw/memory_array.h"
#include "scanners/zukhw/numa_nodes.h"
#include "scanners/zukhw/page_size.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_names.h"
#include "scanners/zukhw/swaps.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kBlocks[] = "sys/devices/system/memory";

// Copies may have one of the two files alone.
bool isOnline(Machine& machine, const std::string& block) {
    const std::string path = std::string(kBlocks) + '/' + block;
    const std::string online = machine.text(path + "/online");
    return online.empty() ? machine.text(path + "/state") == "online" : online == "1";
}

std::vector<std::string> memoryBlocks(Machine& machine) {
    std::vector<std::string> blocks;
    for (const std::string& name : machine.listUnordered(kBlocks)) {
        const bool isBlock = startsWith(name, "memory") && parseDecimal(name.substr(6));
        if (isBlock) blocks.push_back(name);
    }
    return blocks;
}

// At least as many blocks are online as it takes to hold the pages of all zones: those of blocks that are
// offline, and those of devices, are not present.
std::uint64_t leastOnlineBlocks(Machine& machine, std::uint64_t blockSize) {
    constexpr std::string_view kPresent = "present ";
    const std::uint64_t pageSize = machine.shared<PageSize>().bytes().value_or(0);
    if (pageSize == 0 || blockSize < pageSize) return 0;
    const std::string zones = machine.read("proc/zoneinfo", Machine::kTable).value_or("");
    std::uint64_t pages = 0;
    for (const std::string_view whole : lines(zones)) {
        const std::string_view line = trim(whole);
        if (startsWith(line, kPresent)) pages += parseDecimal(line.substr(kPresent.size())).value_or(0);
    }
    const std::uint64_t pagesPerBlock = blockSize / pageSize;
    return pages / pagesPerBlock + (pages % pagesPerBlock == 0 ? 0 : 1);
}

// The memory that the kernel manages, block by block. There can be hundreds: they are asked one by one only
// when some may be offline.
std::optional<std::uint64_t> onlineBlocksBytes(Machine& machine) {
    const auto blockSize = machine.hexNumber(std::string(kBlocks) + "/block_size_bytes");
    if (!blockSize) return std::nullopt;
    const std::vector<std::string> blocks = memoryBlocks(machine);
    std::uint64_t online = blocks.size();
    if (leastOnlineBlocks(machine, *blockSize) < blocks.size()) {
        online = static_cast<std::uint64_t>(
            std::count_if(blocks.begin(), blocks.end(),
                          [&](const std::string& block) { return isOnline(machine, block); }));
    }
    if (online == 0 || *blockSize > UINT64_MAX / online) return std::nullopt;
    return online * *blockSize;
}

std::optional<std::uint64_t> memoryMapBytes(Machine& machine) {
    std::uint64_t total = 0;
    for (const std::string& entry : machine.list("sys/firmware/memmap")) {
        const std::string path = "sys/firmware/memmap/" + entry;
        if (machine.text(path + "/type") != "System RAM") continue;
        const auto first = machine.hexNumber(path + "/start");
        const auto last = machine.hexNumber(path + "/end");
        if (first && last && *last >= *first) total += *last - *first + 1;
    }
    return total == 0 ? std::nullopt : std::optional(total);
}

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

// The "memory" nodes of the device tree: each has pairs of address and size, in cells of four bytes.
std::optional<std::uint64_t> deviceTreeBytes(Machine& machine) {
    if (deviceTreeRoot(machine).empty()) return std::nullopt;
    const std::string tree = deviceTreeRoot(machine) + '/';
    const std::uint64_t addressCells = bigEndian(machine.read(tree + "#address-cells").value_or(""));
    const std::uint64_t sizeCells = bigEndian(machine.read(tree + "#size-cells").value_or(""));
    if (addressCells > 2 || sizeCells == 0 || sizeCells > 2) return std::nullopt;
    const std::size_t addressBytes = addressCells * 4;
    const std::size_t pairBytes = addressBytes + sizeCells * 4;
    std::uint64_t total = 0;
    for (const std::string& node : machine.list(tree)) {
        if (node != "memory" && !startsWith(node, "memory@")) continue;
        const std::string reg = machine.read(tree + node + "/reg").value_or("");
        for (std::size_t at = 0; at + pairBytes <= reg.size(); at += pairBytes) {
            total += bigEndian(std::string_view(reg).substr(at + addressBytes, sizeCells * 4));
        }
    }
    return total == 0 ? std::nullopt : std::optional(total);
}

// Sum of the modules, when it can be true: less than the kernel has at its disposal cannot be, and some
// virtual machines' firmware tells of the memory that they could be given.
std::optional<std::uint64_t> modulesBytes(Machine& machine, const SystemMemory& memory) {
    std::uint64_t sum = 0;
    for (const SmbiosStructure* device : memory.devices) sum += memoryDeviceBytes(*device).value_or(0);
    if (sum == 0) return std::nullopt;
    const auto total = machine.shared<Meminfo>().bytes("MemTotal");
    if (total && sum < *total) return std::nullopt;
    // The blocks are never less than the total: reading hundreds of them is worth it only in doubt.
    if (total && sum / 4 <= *total) return sum;
    const auto blocks = onlineBlocksBytes(machine);
    return blocks && sum / 4 > *blocks ? std::nullopt : std::optional(sum);
}

void writeInstalled(Machine& machine, const SystemMemory& memory, GroupWriter& out) {
    const char* source = "SMBIOS";
    auto installed = modulesBytes(machine, memory);
    if (!installed && (installed = onlineBlocksBytes(machine))) source = "MemoryBlocks";
    if (!installed && (installed = memoryMapBytes(machine))) source = "MemoryMap";
    if (!installed && (installed = deviceTreeBytes(machine))) source = "DeviceTree";
    if (!installed) return;
    out.number("InstalledBytes", *installed);
    out.text("InstalledSource", source);
}

void writeUse(const Meminfo& meminfo, GroupWriter& out) {
    out.number("TotalBytes", meminfo.bytes("MemTotal"));
    out.number("AvailableBytes", meminfo.bytes("MemAvailable"));
    out.number("FreeBytes", meminfo.bytes("MemFree"));
    out.number("BuffersBytes", meminfo.bytes("Buffers"));
    out.number("CachedBytes", meminfo.bytes("Cached"));
    out.number("SwapTotalBytes", meminfo.bytes("SwapTotal"));
    out.number("SwapFreeBytes", meminfo.bytes("SwapFree"));
}

std::optional<std::uint64_t> maximumCapacity(const SystemMemory& memory) {
    constexpr std::uint32_t kSeeExtended = 0x80000000;
    std::uint64_t total = 0;
    for (const SmbiosStructure* array : memory.arrays) {
        const auto kilobytes = array->dword(0x07);
        if (!kilobytes) continue;
        total +=
            *kilobytes == kSeeExtended ? array->qword(0x0F).value_or(0) : *kilobytes * std::uint64_t{1024};
    }
    return total == 0 ? std::nullopt : std::optional(total);
}

std::vector<std::string> errorCorrection(const SystemMemory& memory) {
    std::vector<std::string> kinds;
    for (const SmbiosStructure* array : memory.arrays) {
        kinds.emplace_back(errorCorrectionName(array->byte(0x06).value_or(0)));
    }
    std::sort(kinds.begin(), kinds.end());
    kinds.erase(std::unique(kinds.begin(), kinds.end()), kinds.end());
    return kinds;
}

void writeSlots(const SystemMemory& memory, GroupWriter& out) {
    if (memory.arrays.empty()) return;
    const auto used =
        std::count_if(memory.devices.begin(), memory.devices.end(),
                      [](const SmbiosStructure* device) { return device->word(0x0C).value_or(0) != 0; });
    out.number("SlotsTotal", memory.devices.size());
    out.number("SlotsUsed", used);
    out.number("MaximumCapacityBytes", maximumCapacity(memory));
    out.list("ErrorCorrection", errorCorrection(memory));
}

std::optional<std::uint64_t> cgroupLimit(Machine& machine) {
    constexpr std::uint64_t kNoLimit = std::uint64_t{1} << 62;
    auto limit = machine.number("sys/fs/cgroup/memory.max");  // "max", no limit, is no number
    if (!limit) limit = machine.number("sys/fs/cgroup/memory/memory.limit_in_bytes");
    return limit && *limit < kNoLimit ? limit : std::nullopt;
}

}  // namespace

void collectMemory(Machine& machine, GroupWriter& out) {
    const Meminfo& meminfo = machine.shared<Meminfo>();
    const SystemMemory memory = findSystemMemory(machine.shared<Smbios>());
    out.beginInstance();
    writeInstalled(machine, memory, out);
    writeUse(meminfo, out);
    out.list("SwapDevices", machine.shared<Swaps>().paths());
    writeSlots(memory, out);
    out.number("NumaNodes", machine.shared<NumaNodes>().count());
    out.number("PageSizeBytes", machine.shared<PageSize>().bytes());
    out.number("HugePageSizeBytes", meminfo.bytes("Hugepagesize"));
    out.number("HugePagesTotal", meminfo.count("HugePages_Total"));
    out.number("CgroupLimitBytes", cgroupLimit(machine));
}
