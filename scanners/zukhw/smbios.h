#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Machine;

// One structure of the SMBIOS table. Offsets are those of the standard (DSP0134), from the structure's start.
// A field is there only when the structure is long enough for it and its version knows it.
class SmbiosStructure {
  public:
    // formatted: the part with the fields, header included; strings: the NUL-terminated ones after it,
    // without the last terminator pair's second NUL. Both point into the table.
    SmbiosStructure(std::string_view formatted, std::string_view strings)
        : formatted_(formatted), strings_(strings) {}

    unsigned type() const { return at(0); }
    unsigned length() const { return at(1); }  // as the structure says it
    unsigned handle() const { return at(2) | at(3) << 8; }

    std::optional<std::uint8_t> byte(std::size_t offset) const;
    std::optional<std::uint16_t> word(std::size_t offset) const;
    std::optional<std::uint32_t> dword(std::size_t offset) const;
    std::optional<std::uint64_t> qword(std::size_t offset) const;
    // `count` bytes as they are; empty when they are not all there.
    std::string_view bytes(std::size_t offset, std::size_t count) const;
    // The string whose number stands at offset, raw (neither cleaned nor tested for placeholders); empty when
    // the number is 0 or past the last string.
    std::string_view string(std::size_t offset) const;
    // The string with this number, from 1.
    std::string_view stringNumber(unsigned number) const;
    // All strings in order, for structures that are lists of them.
    std::vector<std::string_view> strings() const;

  private:
    unsigned at(std::size_t offset) const { return static_cast<unsigned char>(formatted_[offset]); }
    std::optional<std::uint64_t> little(std::size_t offset, std::size_t size) const;

    std::string_view formatted_;
    std::string_view strings_;
};

// The firmware's SMBIOS table; machine.shared<Smbios>(). Read from the table files, else from the entries
// that the kernel makes of them (both for root only).
class Smbios {
  public:
    enum class Source { None, Tables, Entries };

    explicit Smbios(Machine& machine);
    Smbios(const Smbios&) = delete;  // the structures point into it
    Smbios& operator=(const Smbios&) = delete;

    bool available() const { return !structures_.empty(); }
    Source source() const { return source_; }
    // Whether string() may know something although the table is not available.
    bool hasIdentity() const { return !identity_.empty(); }
    // Major * 256 + minor, 0x0207 is 2.7; no value without an entry point.
    std::optional<unsigned> version() const { return version_; }
    // The table's bytes, as far as they were walked or not.
    const std::string& table() const { return table_; }
    // All structures in the table's order, the end-of-table one included.
    const std::vector<SmbiosStructure>& structures() const { return structures_; }
    // Those of one type, in the table's order; valid as long as this object.
    std::vector<const SmbiosStructure*> ofType(unsigned type) const;
    // The first one of that type, or null.
    const SmbiosStructure* first(unsigned type) const;

    // The string at `offset` of the first structure of that type, raw; without a table what the kernel shows
    // of it in /sys/class/dmi/id, which also ordinary users may read. Empty when neither tells.
    std::string string(unsigned type, std::size_t offset) const;

  private:
    void readEntryPoint(Machine& machine);
    void readEntries(Machine& machine);
    void walk(Machine& machine, std::string_view source);
    void readIdentity(Machine& machine);

    Source source_ = Source::None;
    std::optional<unsigned> version_;
    std::string table_;
    std::vector<SmbiosStructure> structures_;
    std::vector<std::string> identity_;  // parallel to the table of sysfs names
};

// The structures in ascending order of their handles.
std::vector<const SmbiosStructure*> byHandle(std::vector<const SmbiosStructure*> structures);

// "4c4c4544-0038-3510-8052-b4c04f4a3132" of the 16 bytes of a structure's UUID field. Up to version 2.5 the
// bytes stand in the order they are written in, later the first three fields are little-endian.
std::string smbiosUuid(std::string_view bytes, std::optional<unsigned> version);
