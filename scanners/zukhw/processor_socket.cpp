#include "scanners/zukhw/processor_socket.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "scanners/zukhw/code_names.h"
#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/smbios_names.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr unsigned kProcessor = 4;

// Mathematical, signal and video processors are no central ones.
bool isOther(const SmbiosStructure* socket) {
    const unsigned type = socket->byte(0x05).value_or(0);
    return type >= 4 && type <= 6;
}

}  // namespace

std::vector<const SmbiosStructure*> processorSockets(const Smbios& smbios) {
    std::vector<const SmbiosStructure*> sockets = byHandle(smbios.ofType(kProcessor));
    sockets.erase(std::remove_if(sockets.begin(), sockets.end(), isOther), sockets.end());
    return sockets;
}

bool isPopulatedSocket(const SmbiosStructure& socket) {
    constexpr unsigned kPopulated = 1U << 6;
    return (socket.byte(0x18).value_or(0) & kPopulated) != 0;
}

std::string_view processorStatus(const SmbiosStructure& socket) {
    static constexpr std::string_view kNames[] = {"", "Enabled", "DisabledByUser", "DisabledByBios", "Idle"};
    return nameOfCode(kNames, socket.byte(0x18).value_or(0) & 7U);
}

std::string processorId(const SmbiosStructure& socket) {
    const auto id = socket.qword(0x08);
    if (!id || *id == 0) return "";
    std::array<char, 17> text{};
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(*id));
    return text.data();
}

std::optional<unsigned> processorCount(const SmbiosStructure& socket, std::size_t offset, std::size_t large) {
    const auto count = socket.byte(offset);
    if (!count || *count == 0) return std::nullopt;
    if (*count != 0xFF) return *count;
    const auto word = socket.word(large);
    if (!word || *word == 0 || *word == 0xFFFF) return std::nullopt;
    return *word;
}

std::optional<std::uint64_t> knownMegahertz(const SmbiosStructure& socket, std::size_t offset) {
    const auto value = socket.word(offset);
    if (!value || *value == 0) return std::nullopt;
    return *value;
}

std::optional<unsigned> processorMillivolts(const SmbiosStructure& socket) {
    constexpr unsigned kTenths = 0x80;
    const unsigned voltage = socket.byte(0x11).value_or(0);
    if ((voltage & kTenths) != 0) {
        const unsigned tenths = voltage & ~kTenths;
        return tenths == 0 ? std::nullopt : std::optional(tenths * 100);
    }
    if (voltage == 1) return 5000;
    if (voltage == 2) return 3300;
    return voltage == 4 ? std::optional(2900U) : std::nullopt;
}

std::string socketType(const SmbiosStructure& socket) {
    const std::string_view name = processorSocketName(socket.byte(0x19).value_or(0));
    return name.empty() ? cleanText(socket.string(0x32)) : std::string(name);
}
