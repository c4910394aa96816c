#include "scanners/zuksw/formats/elf.h"

#include <elf.h>

#include <algorithm>

namespace zuksw {

namespace {

// More than any linker writes; what is beyond is not looked at.
constexpr std::uint64_t kMaxSections = 65536;
constexpr std::size_t kMaxSectionName = 256;
constexpr std::size_t kMaxInterpreter = 4096;

struct MachineName {
    unsigned machine;
    bool is64;
    std::string_view bigEndian;
    std::string_view littleEndian;
};

constexpr MachineName kMachines[] = {
    {EM_X86_64, true, "", "x86_64"},       {EM_X86_64, false, "", "x32"},
    {EM_386, false, "", "i386"},           {EM_AARCH64, true, "aarch64_be", "aarch64"},
    {EM_ARM, false, "armeb", "arm"},       {EM_PPC64, true, "ppc64", "ppc64le"},
    {EM_PPC, false, "ppc", "ppcle"},       {EM_S390, true, "s390x", ""},
    {EM_S390, false, "s390", ""},          {EM_RISCV, true, "", "riscv64"},
    {EM_RISCV, false, "", "riscv32"},      {EM_LOONGARCH, true, "", "loongarch64"},
    {EM_MIPS, true, "mips64", "mips64el"}, {EM_MIPS, false, "mips", "mipsel"},
    {EM_SPARCV9, true, "sparc64", ""},     {EM_SPARC, false, "sparc", ""},
    {EM_IA_64, true, "", "ia64"},          {EM_ALPHA, true, "", "alpha"},
    {EM_PARISC, false, "parisc", ""},      {EM_68K, false, "m68k", ""},
};

// Reads the fields of one record in turn: those of 64-bit files are wider, and some stand in another order.
class Fields {
  public:
    Fields(const Bytes& bytes, std::uint64_t offset, bool is64) : bytes_(bytes), next_(offset), is64_(is64) {}

    std::uint32_t word() { return static_cast<std::uint32_t>(take(4)); }
    std::uint64_t address() { return take(is64_ ? 8 : 4); }

  private:
    std::uint64_t take(unsigned width) {
        const std::uint64_t value = bytes_.numberOr0(next_, width);
        next_ += width;
        return value;
    }

    const Bytes& bytes_;
    std::uint64_t next_;
    bool is64_;
};

ElfSegment readSegment(const Bytes& bytes, std::uint64_t offset, bool is64) {
    Fields fields(bytes, offset, is64);
    ElfSegment segment;
    segment.type = fields.word();
    if (is64) fields.word();  // flags
    segment.offset = fields.address();
    segment.address = fields.address();
    fields.address();  // physical address
    segment.size = fields.address();
    fields.address();  // size in memory
    if (!is64) fields.word();
    segment.alignment = fields.address();
    return segment;
}

// The name is set later: its table is a section too.
ElfSection readSection(const Bytes& bytes, std::uint64_t offset, bool is64) {
    Fields fields(bytes, offset, is64);
    ElfSection section;
    fields.word();  // name
    section.type = fields.word();
    fields.address();  // flags
    fields.address();  // address
    section.offset = fields.address();
    section.size = fields.address();
    section.link = fields.word();
    fields.word();  // info
    section.alignment = fields.address();
    return section;
}

// A table in the file: where it begins, and how many records of which size it has.
struct Table {
    std::uint64_t offset = 0;
    std::uint64_t recordSize = 0;
    std::uint64_t count = 0;

    // Cut to the records that lie inside the file.
    void fitInto(std::size_t fileSize) {
        if (offset >= fileSize || recordSize == 0) count = 0;
        if (count > 0) count = std::min(count, (fileSize - offset) / recordSize);
    }
};

}  // namespace

std::optional<Elf> Elf::parse(std::string_view file) {
    if (file.size() < EI_NIDENT || file.substr(0, SELFMAG) != std::string_view(ELFMAG, SELFMAG))
        return std::nullopt;
    const char fileClass = file[EI_CLASS];
    const char order = file[EI_DATA];
    if (fileClass != ELFCLASS32 && fileClass != ELFCLASS64) return std::nullopt;
    if (order != ELFDATA2LSB && order != ELFDATA2MSB) return std::nullopt;
    Elf elf(Bytes(file, order == ELFDATA2LSB ? Bytes::Order::Little : Bytes::Order::Big));
    elf.is64_ = fileClass == ELFCLASS64;
    if (file.size() < (elf.is64_ ? sizeof(Elf64_Ehdr) : sizeof(Elf32_Ehdr))) return std::nullopt;
    elf.type_ = static_cast<unsigned>(elf.bytes_.numberOr0(16, 2));
    elf.machine_ = static_cast<unsigned>(elf.bytes_.numberOr0(18, 2));
    elf.readSegments();
    elf.readSections();
    return elf;
}

void Elf::readSegments() {
    Table table;
    table.offset = is64_ ? bytes_.numberOr0(32, 8) : bytes_.numberOr0(28, 4);
    table.recordSize = bytes_.numberOr0(is64_ ? 54 : 42, 2);
    table.count = bytes_.numberOr0(is64_ ? 56 : 44, 2);
    if (table.recordSize < (is64_ ? sizeof(Elf64_Phdr) : sizeof(Elf32_Phdr))) return;
    table.fitInto(bytes_.size());
    segments_.reserve(table.count);
    for (std::uint64_t i = 0; i < table.count; ++i) {
        segments_.push_back(readSegment(bytes_, table.offset + i * table.recordSize, is64_));
    }
}

void Elf::readSections() {
    Table table;
    table.offset = is64_ ? bytes_.numberOr0(40, 8) : bytes_.numberOr0(32, 4);
    table.recordSize = bytes_.numberOr0(is64_ ? 58 : 46, 2);
    table.count = bytes_.numberOr0(is64_ ? 60 : 48, 2);
    std::uint64_t names = bytes_.numberOr0(is64_ ? 62 : 50, 2);
    if (table.offset == 0 || table.recordSize < (is64_ ? sizeof(Elf64_Shdr) : sizeof(Elf32_Shdr))) return;
    // A count that does not fit the header stands in the first section.
    const ElfSection first = readSection(bytes_, table.offset, is64_);
    if (table.count == 0) table.count = first.size;
    if (names == SHN_XINDEX) names = first.link;
    table.count = std::min(table.count, kMaxSections);
    table.fitInto(bytes_.size());
    sections_.reserve(table.count);
    for (std::uint64_t i = 0; i < table.count; ++i) {
        sections_.push_back(readSection(bytes_, table.offset + i * table.recordSize, is64_));
    }
    if (names >= sections_.size()) return;
    const std::uint64_t nameTable = sections_[names].offset;
    for (std::uint64_t i = 0; i < table.count; ++i) {
        const std::uint64_t name = bytes_.numberOr0(table.offset + i * table.recordSize, 4);
        if (nameTable > bytes_.size()) break;
        sections_[i].name = bytes_.text(nameTable + name, kMaxSectionName).value_or("");
    }
}

std::string Elf::machine() const {
    for (const MachineName& row : kMachines) {
        if (row.machine != machine_ || row.is64 != is64_) continue;
        const std::string_view name = isLittleEndian() ? row.littleEndian : row.bigEndian;
        if (!name.empty()) return std::string(name);
    }
    return std::to_string(machine_);
}

const ElfSegment* Elf::segment(std::uint32_t type) const {
    const auto found =
        std::find_if(segments_.begin(), segments_.end(), [&](const auto& s) { return s.type == type; });
    return found == segments_.end() ? nullptr : &*found;
}

const ElfSection* Elf::section(std::string_view name) const {
    const auto found =
        std::find_if(sections_.begin(), sections_.end(), [&](const auto& s) { return s.name == name; });
    return found == sections_.end() ? nullptr : &*found;
}

std::optional<std::string_view> Elf::sectionBytes(std::string_view name) const {
    const ElfSection* found = section(name);
    if (found == nullptr || found->type == SHT_NOBITS) return std::nullopt;
    return bytes_.piece(found->offset, found->size);
}

std::optional<std::uint64_t> Elf::offsetOf(std::uint64_t address) const {
    for (const ElfSegment& segment : segments_) {
        const bool inside = address >= segment.address && address - segment.address < segment.size;
        if (segment.type == PT_LOAD && inside && segment.offset <= bytes_.size()) {
            return segment.offset + (address - segment.address);
        }
    }
    return std::nullopt;
}

std::string_view Elf::interpreter() const {
    const ElfSegment* found = segment(PT_INTERP);
    if (found == nullptr) return {};
    return bytes_.text(found->offset, kMaxInterpreter).value_or("");
}

}  // namespace zuksw
