// Group "PhysicalProcessor": one instance per socket, populated or empty: what the kernel knows of the
// package in it, and what the firmware (SMBIOS type 4) says of the socket.
#include <algorithm>
#include <string>
#include <vector>

#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/cpu_identity.h"
#include "scanners/zukhw/cpu_info.h"
#include "scanners/zukhw/cpu_package.h"
#include "scanners/zukhw/cpu_topology.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/processor_socket.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/text.h"

namespace {

// A socket as far as each side knows it; not both are null.
struct Socket {
    const CpuPackage* package = nullptr;
    const SmbiosStructure* record = nullptr;

    std::string designation() const { return record != nullptr ? cleanText(record->string(0x04)) : ""; }
};

// Records are matched with packages only when there are as many: nothing else tells which is which.
std::vector<Socket> pairSockets(const std::vector<CpuPackage>& packages,
                                const std::vector<const SmbiosStructure*>& records) {
    std::vector<const SmbiosStructure*> populated;
    std::vector<Socket> sockets;
    for (const SmbiosStructure* record : records) {
        if (isPopulatedSocket(*record)) {
            populated.push_back(record);
        } else {
            sockets.push_back({nullptr, record});
        }
    }
    const bool match = packages.size() == populated.size();
    for (std::size_t i = 0; i < packages.size(); ++i) {
        sockets.push_back({&packages[i], match ? populated[i] : nullptr});
    }
    // Without a word of the kernel's there is none that theirs could contradict.
    if (packages.empty()) {
        for (const SmbiosStructure* record : populated) sockets.push_back({nullptr, record});
    }
    return sockets;
}

bool comesBefore(const Socket& a, const Socket& b) {
    const bool aHasId = a.package != nullptr && a.package->id;
    const bool bHasId = b.package != nullptr && b.package->id;
    if (aHasId != bHasId) return aHasId;
    if (aHasId && a.package->id != b.package->id) return *a.package->id < *b.package->id;
    return naturalLess(a.designation(), b.designation());
}

// A text that the kernel gives, else the firmware's.
void writeEither(const char* field, const std::string& text, const SmbiosStructure* record,
                 std::size_t offset, GroupWriter& out) {
    if (text.empty() && record != nullptr) return out.hardware(field, record->string(offset));
    out.hardware(field, text);
}

void writeIdentity(Machine& machine, const Socket& socket, GroupWriter& out) {
    const CpuIdentity identity =
        socket.package != nullptr ? identifyCpu(machine, socket.package->first()) : CpuIdentity{};
    writeEither("Manufacturer", identity.manufacturer, socket.record, 0x07, out);
    writeEither("Model", identity.model, socket.record, 0x10, out);
    out.number("Family", identity.family);
    out.number("ModelNumber", identity.modelNumber);
    out.text("Stepping", identity.stepping);
    if (socket.record != nullptr) out.text("ProcessorId", processorId(*socket.record));
}

void writeCores(const Socket& socket, GroupWriter& out) {
    const CpuPackage* package = socket.package;
    const SmbiosStructure* record = socket.record;
    if (package != nullptr) {
        out.number("Cores", package->cores());
        out.number("Threads", package->cpus.size());
        out.number("OnlineThreads", package->onlineCpus());
    } else {
        out.number("Cores", processorCount(*record, 0x23, 0x2A));
        out.number("Threads", processorCount(*record, 0x25, 0x2E));
    }
    if (record != nullptr) out.number("CoresEnabled", processorCount(*record, 0x24, 0x2C));
    if (package == nullptr) return;
    out.number("PerformanceCores", package->coresOfType(CoreType::Performance));
    out.number("EfficiencyCores", package->coresOfType(CoreType::Efficiency));
    out.number("ThreadsPerCore", package->threadsPerCore());
}

void writeElectric(const Socket& socket, GroupWriter& out) {
    auto maxMHz = socket.package != nullptr ? socket.package->maxMHz() : std::nullopt;
    if (!maxMHz && socket.record != nullptr) maxMHz = knownMegahertz(*socket.record, 0x14);
    out.number("MaxMHz", maxMHz);
    if (socket.record == nullptr) return;
    out.number("CurrentMHz", knownMegahertz(*socket.record, 0x16));
    out.number("ExternalClockMHz", knownMegahertz(*socket.record, 0x12));
    out.number("VoltageMillivolts", processorMillivolts(*socket.record));
}

void writeLabels(const SmbiosStructure& record, GroupWriter& out) {
    out.text("SocketType", socketType(record));
    out.hardware("SerialNumber", record.string(0x20));
    out.hardware("AssetTag", record.string(0x21));
    out.hardware("PartNumber", record.string(0x22));
}

void writeCaches(const CpuPackage& package, GroupWriter& out) {
    out.number("L1dCacheBytes", package.cacheBytes(1, CpuCache::Type::Data));
    out.number("L1iCacheBytes", package.cacheBytes(1, CpuCache::Type::Instruction));
    out.number("L2CacheBytes", package.cacheBytes(2, CpuCache::Type::Data));
    out.number("L3CacheBytes", package.cacheBytes(3, CpuCache::Type::Data));
    std::vector<std::string> nodes;
    for (const std::uint64_t node : package.numaNodes()) nodes.push_back(std::to_string(node));
    out.list("NumaNodes", nodes);
}

bool has(const std::vector<std::string>& flags, const char* flag) {
    return std::binary_search(flags.begin(), flags.end(), flag);
}

std::vector<std::string> flagsOf(const CpuInfo& info, unsigned cpu) {
    std::vector<std::string> flags;
    for (const std::string_view flag : words(info.value(cpu, {"flags", "Features", "features"}))) {
        flags.emplace_back(flag);
    }
    std::sort(flags.begin(), flags.end());
    flags.erase(std::unique(flags.begin(), flags.end()), flags.end());
    return flags;
}

// Only x86 has the key "flags".
std::optional<bool> is64Bit(Machine& machine, unsigned cpu, const std::vector<std::string>& flags) {
    const CpuInfo& info = machine.shared<CpuInfo>();
    if (!info.value(cpu, {"flags"}).empty()) return has(flags, "lm");
    // "loongarch32 loongarch64", "rv64imafdc". A kernel of 32 bits may run on a processor of 64.
    const std::string& name = machine.shared<Architecture>().name();
    const bool is64 = name.find("64") != std::string::npos || name == "s390x" ||
                      info.value(cpu, {"ISA", "isa"}).find("64") != std::string_view::npos;
    return is64 ? std::optional(true) : std::nullopt;
}

void writeFeatures(Machine& machine, const CpuPackage& package, GroupWriter& out) {
    const CpuInfo& info = machine.shared<CpuInfo>();
    const std::vector<std::string> flags = flagsOf(info, package.first());
    out.boolean("Is64Bit", is64Bit(machine, package.first(), flags));
    if (has(flags, "vmx")) out.text("HardwareVirtualization", "VT-x");
    if (has(flags, "svm")) out.text("HardwareVirtualization", "AMD-V");
    if (has(flags, "sie")) out.text("HardwareVirtualization", "SIE");
    const CpuAddressBits bits = info.addressBits(package.first());
    out.number("PhysicalAddressBits", bits.physical);
    out.number("VirtualAddressBits", bits.virtualBits);
    out.text("Flags", join(flags, " "));
}

std::vector<std::string> vulnerabilities(Machine& machine) {
    static const std::string kDirectory = "sys/devices/system/cpu/vulnerabilities";
    std::vector<std::string> found;
    const std::string start = kDirectory + '/';
    for (const std::string& name : machine.list(kDirectory)) {
        const std::string status = machine.text(start + name);
        if (!status.empty()) found.push_back(std::string(name).append("=").append(status));
    }
    return found;
}

void writeSocket(Machine& machine, const Socket& socket, const std::vector<std::string>& faults,
                 GroupWriter& out) {
    const bool populated = socket.package != nullptr || isPopulatedSocket(*socket.record);
    out.beginInstance();
    if (socket.package != nullptr) out.number("SocketId", socket.package->id);
    if (socket.record != nullptr) out.hardware("SocketDesignation", socket.record->string(0x04));
    out.boolean("Populated", populated);
    if (!populated) return out.text("SocketType", socketType(*socket.record));
    if (socket.record != nullptr) out.text("Status", processorStatus(*socket.record));
    writeIdentity(machine, socket, out);
    writeCores(socket, out);
    writeElectric(socket, out);
    if (socket.record != nullptr) writeLabels(*socket.record, out);
    if (socket.package == nullptr) return;
    writeCaches(*socket.package, out);
    writeFeatures(machine, *socket.package, out);
    out.list("Vulnerabilities", faults);
}

}  // namespace

void collectPhysicalProcessor(Machine& machine, GroupWriter& out) {
    const std::vector<CpuPackage> packages = findCpuPackages(machine.shared<CpuTopology>());
    const std::vector<const SmbiosStructure*> records = processorSockets(machine.shared<Smbios>());
    std::vector<Socket> sockets = pairSockets(packages, records);
    std::stable_sort(sockets.begin(), sockets.end(), comesBefore);
    const std::vector<std::string> faults = vulnerabilities(machine);
    for (const Socket& socket : sockets) writeSocket(machine, socket, faults, out);
}
