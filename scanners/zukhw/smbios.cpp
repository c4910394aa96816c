#include "scanners/zukhw/smbios.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/smbios_versions.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kTablePath[] = "sys/firmware/dmi/tables/DMI";
constexpr char kEntryPointPath[] = "sys/firmware/dmi/tables/smbios_entry_point";
constexpr char kEntriesPath[] = "sys/firmware/dmi/entries";
constexpr std::size_t kHeader = 4;
constexpr unsigned kEndOfTable = 127;
constexpr std::size_t kMaxStructures = 65536;  // handles have 16 bits

// What the kernel shows of the table as text.
struct Identity {
    unsigned type;
    std::size_t offset;
    const char* name;
};
constexpr Identity kIdentities[] = {
    {0, 0x04, "bios_vendor"},     {0, 0x05, "bios_version"},    {0, 0x08, "bios_date"},
    {1, 0x04, "sys_vendor"},      {1, 0x05, "product_name"},    {1, 0x06, "product_version"},
    {1, 0x07, "product_serial"},  {1, 0x19, "product_sku"},     {1, 0x1A, "product_family"},
    {2, 0x04, "board_vendor"},    {2, 0x05, "board_name"},      {2, 0x06, "board_version"},
    {2, 0x07, "board_serial"},    {2, 0x08, "board_asset_tag"}, {3, 0x04, "chassis_vendor"},
    {3, 0x06, "chassis_version"}, {3, 0x07, "chassis_serial"},  {3, 0x08, "chassis_asset_tag"},
};

// The version that firmware means by numbers which no version of the standard has, as the kernel takes them.
unsigned meantVersion(unsigned told) {
    if (told == 0x021F || told == 0x0221) return 0x0203;
    return told == 0x0233 ? 0x0206 : told;
}

// The length of the string area at the head of `bytes`, both NULs of its end included; 0 when it does not
// end.
std::size_t stringAreaLength(std::string_view bytes) {
    constexpr std::string_view kEnd("\0\0", 2);
    const std::size_t end = bytes.find(kEnd);
    return end == std::string_view::npos ? 0 : end + kEnd.size();
}

}  // namespace

std::optional<std::uint64_t> SmbiosStructure::little(std::size_t offset, std::size_t size) const {
    if (offset > formatted_.size() || formatted_.size() - offset < size) return std::nullopt;
    std::uint64_t value = 0;
    for (std::size_t i = size; i-- > 0;) value = value << 8 | at(offset + i);
    return value;
}

std::optional<std::uint8_t> SmbiosStructure::byte(std::size_t offset) const {
    const auto value = little(offset, 1);
    return value ? std::optional(static_cast<std::uint8_t>(*value)) : std::nullopt;
}

std::optional<std::uint16_t> SmbiosStructure::word(std::size_t offset) const {
    const auto value = little(offset, 2);
    return value ? std::optional(static_cast<std::uint16_t>(*value)) : std::nullopt;
}

std::optional<std::uint32_t> SmbiosStructure::dword(std::size_t offset) const {
    const auto value = little(offset, 4);
    return value ? std::optional(static_cast<std::uint32_t>(*value)) : std::nullopt;
}

std::optional<std::uint64_t> SmbiosStructure::qword(std::size_t offset) const {
    return little(offset, 8);
}

std::string_view SmbiosStructure::bytes(std::size_t offset, std::size_t count) const {
    if (offset > formatted_.size() || formatted_.size() - offset < count) return {};
    return formatted_.substr(offset, count);
}

std::string_view SmbiosStructure::string(std::size_t offset) const {
    const auto number = byte(offset);
    return number ? stringNumber(*number) : std::string_view();
}

std::string_view SmbiosStructure::stringNumber(unsigned number) const {
    if (number == 0) return {};
    std::string_view rest = strings_;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        if (--number == 0) return rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return {};
}

std::vector<std::string_view> SmbiosStructure::strings() const {
    std::vector<std::string_view> all;
    for (std::string_view rest = strings_; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\0'), rest.size());
        all.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return all;
}

Smbios::Smbios(Machine& machine) {
    readEntryPoint(machine);
    if (auto table = machine.read(kTablePath, Machine::kTable)) {
        table_ = std::move(*table);
        source_ = Source::Tables;
        walk(machine, kTablePath);
    }
    if (structures_.empty()) readEntries(machine);
    if (structures_.empty()) readIdentity(machine);
}

// The address of the table that it holds is of no use: the kernel gives the table as a file.
void Smbios::readEntryPoint(Machine& machine) {
    const std::string entry = machine.read(kEntryPointPath).value_or("");
    std::size_t at = 0;
    if (startsWith(entry, "_SM3_")) at = 7;
    if (startsWith(entry, "_SM_")) at = 6;
    if (at == 0 || entry.size() < at + 2) return;
    version_ = meantVersion(static_cast<unsigned char>(entry[at]) * 256U +
                            static_cast<unsigned char>(entry[at + 1]));
}

void Smbios::readEntries(Machine& machine) {
    std::vector<std::pair<std::uint64_t, std::string>> entries;
    for (const std::string& name : machine.list(kEntriesPath)) {
        const std::string path = std::string(kEntriesPath) + '/' + name;
        const std::size_t denials = machine.sources().denials();
        auto raw = machine.read(path + "/raw");
        if (machine.sources().denials() != denials) break;  // all of them have the same mode
        if (!raw) continue;
        entries.emplace_back(machine.number(path + "/position").value_or(UINT64_MAX), std::move(*raw));
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    table_.clear();
    for (const auto& [position, raw] : entries) table_ += raw;
    if (table_.empty()) return;
    source_ = Source::Entries;
    walk(machine, kEntriesPath);
}

void Smbios::walk(Machine& machine, std::string_view source) {
    const std::string_view table(table_);
    std::size_t at = 0;
    while (at < table.size() && structures_.size() < kMaxStructures) {
        const std::string_view rest = table.substr(at);
        const std::size_t length = rest.size() < kHeader ? 0 : static_cast<unsigned char>(rest[1]);
        if (length < kHeader || length > rest.size()) return machine.sources().malformed(source, at);
        const unsigned type = static_cast<unsigned char>(rest[0]);
        const std::size_t strings = stringAreaLength(rest.substr(length));
        // Many tables end right after the formatted part of their last structure.
        if (strings == 0 && type != kEndOfTable) return machine.sources().malformed(source, at);
        const std::size_t known = smbiosKnownLength(type, length, version_);
        structures_.emplace_back(rest.substr(0, known), rest.substr(length, strings < 2 ? 0 : strings - 2));
        if (type == kEndOfTable) return;
        at += length + strings;
    }
}

void Smbios::readIdentity(Machine& machine) {
    static const std::string kDirectory = "sys/class/dmi/id/";
    if (!machine.exists(kDirectory)) return;
    for (const Identity& identity : kIdentities)
        identity_.push_back(machine.text(kDirectory + identity.name));
}

std::vector<const SmbiosStructure*> Smbios::ofType(unsigned type) const {
    std::vector<const SmbiosStructure*> found;
    for (const SmbiosStructure& structure : structures_) {
        if (structure.type() == type) found.push_back(&structure);
    }
    return found;
}

const SmbiosStructure* Smbios::first(unsigned type) const {
    const auto isType = [&](const SmbiosStructure& structure) { return structure.type() == type; };
    const auto found = std::find_if(structures_.begin(), structures_.end(), isType);
    return found == structures_.end() ? nullptr : &*found;
}

std::string Smbios::string(unsigned type, std::size_t offset) const {
    if (const SmbiosStructure* structure = first(type)) return std::string(structure->string(offset));
    for (std::size_t i = 0; i < identity_.size(); ++i) {
        if (kIdentities[i].type == type && kIdentities[i].offset == offset) return identity_[i];
    }
    return "";
}

std::vector<const SmbiosStructure*> byHandle(std::vector<const SmbiosStructure*> structures) {
    const auto less = [](const auto* a, const auto* b) { return a->handle() < b->handle(); };
    std::stable_sort(structures.begin(), structures.end(), less);
    return structures;
}

std::string smbiosUuid(std::string_view bytes, std::optional<unsigned> version) {
    constexpr unsigned kLittleEndianSince = 0x0206;
    if (bytes.size() != 16) return "";
    static constexpr int kAsWritten[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    static constexpr int kLittle[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    const bool little = !version || *version >= kLittleEndianSince;
    std::string text;
    for (std::size_t i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        std::array<char, 3> hex{};
        const auto from = static_cast<std::size_t>((little ? kLittle : kAsWritten)[i]);
        std::snprintf(hex.data(), hex.size(), "%02x", static_cast<unsigned char>(bytes[from]));
        text += hex.data();
    }
    return text;
}
