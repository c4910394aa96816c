#include "scanners/zukhw/cpu_identity.h"

#include <array>
#include <cstdio>

#include "scanners/zukhw/arm_parts.h"
#include "scanners/zukhw/cpu_info.h"
#include "scanners/zukhw/cpu_vendors.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

// The main identification register of an ARM CPU, in parts.
struct Midr {
    unsigned implementer = 0, variant = 0, part = 0, revision = 0;
};

Midr splitMidr(std::uint64_t value) {
    const auto bits = [&](unsigned from, unsigned mask) {
        return static_cast<unsigned>(value >> from) & mask;
    };
    return {bits(24, 0xFF), bits(20, 0xF), bits(4, 0xFFF), bits(0, 0xF)};
}

std::optional<Midr> midrOfBlock(const CpuInfo& info, unsigned cpu) {
    const auto implementer = parseHex(info.value(cpu, {"CPU implementer"}));
    const auto part = parseHex(info.value(cpu, {"CPU part"}));
    if (!implementer || !part || *implementer > 0xFF || *part > 0xFFF) return std::nullopt;
    const auto variant = parseHex(info.value(cpu, {"CPU variant"}));
    const auto revision = parseDecimal(info.value(cpu, {"CPU revision"}));
    return Midr{static_cast<unsigned>(*implementer), static_cast<unsigned>(variant.value_or(0)),
                static_cast<unsigned>(*part), static_cast<unsigned>(revision.value_or(0))};
}

std::optional<Midr> midrOfRegister(Machine& machine, unsigned cpu) {
    const auto value = machine.hexNumber("sys/devices/system/cpu/cpu" + std::to_string(cpu) +
                                         "/regs/identification/midr_el1");
    return value ? std::optional(splitMidr(*value)) : std::nullopt;
}

std::string armModel(const Midr& midr) {
    const std::string_view name = armPartName(midr.implementer, midr.part);
    if (!name.empty()) return std::string(name);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "implementer 0x%02x part 0x%03x", midr.implementer, midr.part);
    return text.data();
}

CpuIdentity identifyArm(const Midr& midr, std::string model) {
    CpuIdentity identity;
    identity.manufacturer = armImplementerName(midr.implementer);
    identity.model = std::move(model);
    identity.stepping = 'r' + std::to_string(midr.variant) + 'p' + std::to_string(midr.revision);
    return identity;
}

// s390: "version = FF, identification = 0133E8, machine = 2964"
std::string machineNumber(std::string_view text) {
    constexpr std::string_view kMachine = "machine = ";
    const std::size_t at = text.find(kMachine);
    return at == std::string_view::npos ? "" : std::string(text.substr(at + kMachine.size(), 4));
}

}  // namespace

CpuIdentity identifyCpu(Machine& machine, unsigned cpu) {
    const CpuInfo& info = machine.shared<CpuInfo>();
    const std::string_view vendor = info.value(cpu, {"vendor_id", "vendor"});
    const std::string_view model = info.value(cpu, {"model name", "Model Name", "cpu model", "cpu", "uarch"});
    if (vendor.empty()) {
        // ARM kernels name the instruction set there ("ARMv7 Processor rev 4"), some the core.
        const bool namesCore = !model.empty() && !startsWith(model, "ARMv");
        auto midr = midrOfBlock(info, cpu);
        if (!midr && !namesCore) midr = midrOfRegister(machine, cpu);
        if (midr) return identifyArm(*midr, namesCore ? std::string(model) : armModel(*midr));
    }
    CpuIdentity identity;
    identity.manufacturer =
        vendor.empty() ? riscvVendorName(info.value(cpu, {"mvendorid"})) : cpuVendorName(vendor);
    identity.model = model.empty() ? info.value(cpu, {"Processor"}) : model;
    if (identity.model.empty()) {
        identity.model = machineNumber(info.value(cpu, {"processor " + std::to_string(cpu)}));
    }
    identity.family = parseDecimal(info.value(cpu, {"cpu family", "CPU Family"}));
    identity.modelNumber = parseDecimal(info.value(cpu, {"model"}));
    if (const auto stepping = parseDecimal(info.value(cpu, {"stepping"}))) {
        identity.stepping = std::to_string(*stepping);
    }
    return identity;
}
