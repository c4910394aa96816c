#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/shared/bytes.h"

namespace zuksw {

struct ElfSegment {
    std::uint32_t type = 0;  // PT_*
    std::uint64_t offset = 0;
    std::uint64_t address = 0;
    std::uint64_t size = 0;  // in the file
    std::uint64_t alignment = 0;
};

struct ElfSection {
    std::string_view name;
    std::uint32_t type = 0;  // SHT_*
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    std::uint64_t alignment = 0;
    std::uint32_t link = 0;  // index of the section it refers to
};

/** The headers of an ELF file. Every offset is checked where it is used, so a damaged file gives less, never
 *  wrong memory. Points into the bytes it was made from, which must outlive it. */
class Elf {
  public:
    /** Nothing when the bytes are no ELF file or its header is cut. */
    static std::optional<Elf> parse(std::string_view file);

    const Bytes& bytes() const { return bytes_; }
    bool is64() const { return is64_; }
    bool isLittleEndian() const { return bytes_.order() == Bytes::Order::Little; }
    unsigned type() const { return type_; }  ///< ET_*

    /** The name that the kernel's uname uses for such a machine ("x86_64", "aarch64"), the number of the
     *  machine when there is none. */
    std::string machine() const;

    /** "32" or "64". */
    std::string_view className() const { return is64_ ? "64" : "32"; }

    const std::vector<ElfSegment>& segments() const { return segments_; }
    const std::vector<ElfSection>& sections() const { return sections_; }

    /** The first segment or section of that kind; null when there is none. */
    const ElfSegment* segment(std::uint32_t type) const;
    const ElfSection* section(std::string_view name) const;

    /** What the file holds for a section of that name; nothing when it has none or keeps no bytes for it. */
    std::optional<std::string_view> sectionBytes(std::string_view name) const;

    /** Where the byte lies in the file that is loaded at `address`. */
    std::optional<std::uint64_t> offsetOf(std::uint64_t address) const;

    /** The program that the kernel starts to load this one; empty for most libraries. */
    std::string_view interpreter() const;

  private:
    explicit Elf(Bytes bytes) : bytes_(bytes) {}

    void readSegments();
    void readSections();

    Bytes bytes_;
    bool is64_ = false;
    unsigned type_ = 0;
    unsigned machine_ = 0;
    std::vector<ElfSegment> segments_;
    std::vector<ElfSection> sections_;
};

}  // namespace zuksw
