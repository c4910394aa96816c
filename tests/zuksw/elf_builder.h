#pragma once

#include <elf.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Puts ELF files together, whole or with something wrong. One loaded segment covers the whole file, so that
// the byte at offset X has the address kBase + X.
class ElfBuilder {
  public:
    static constexpr std::uint64_t kBase = 0x10000;

    ElfBuilder(bool is64, bool bigEndian) : is64_(is64), bigEndian_(bigEndian) {}

    unsigned fileType = ET_DYN;
    unsigned machine = EM_X86_64;

    std::string number(std::uint64_t value, unsigned width) const {
        std::string bytes;
        for (unsigned i = 0; i < width; ++i) {
            const unsigned shift = 8 * (bigEndian_ ? width - 1 - i : i);
            bytes += static_cast<char>(value >> shift & 0xFFU);
        }
        return bytes;
    }
    std::string address(std::uint64_t value) const { return number(value, is64_ ? 8 : 4); }

    std::string note(std::string_view owner, std::uint32_t type, std::string_view content) const {
        std::string bytes = number(owner.size() + 1, 4) + number(content.size(), 4) + number(type, 4);
        bytes += padded(std::string(owner) + '\0') + padded(std::string(content));
        return bytes;
    }

    // Adds a section, and a segment of type `segment` when that is not PT_NULL. Returns its offset in the
    // file.
    std::uint64_t add(std::string_view name, std::uint32_t type, std::string_view content,
                      std::uint32_t segment = PT_NULL) {
        pieces_.push_back({std::string(name), type, segment, next_, std::string(content)});
        next_ += padded(std::string(content)).size();
        return pieces_.back().offset;
    }

    // A dynamic section with its texts: pairs of tag and text, or of tag and number where the text is empty.
    struct Entry {
        std::uint64_t tag;
        std::string text;
        std::uint64_t number = 0;
    };
    void addDynamic(const std::vector<Entry>& entries) {
        std::string texts(1, '\0');
        std::string table;
        for (const Entry& entry : entries) {
            table += address(entry.tag) + address(entry.text.empty() ? entry.number : texts.size());
            if (!entry.text.empty()) texts += entry.text + '\0';
        }
        const std::uint64_t textsAt = add(".dynstr", SHT_STRTAB, texts);
        table += address(DT_STRTAB) + address(kBase + textsAt) + address(DT_NULL) + address(0);
        add(".dynamic", SHT_DYNAMIC, table, PT_DYNAMIC);
    }

    std::string build() const {
        std::string names(1, '\0');
        std::string headers = section({}, 0);
        for (const Piece& piece : pieces_) {
            headers += section(piece, names.size());
            names += piece.name + '\0';
        }
        Piece nameTable = {".shstrtab", SHT_STRTAB, PT_NULL, next_, ""};
        const std::size_t nameOfNames = names.size();
        names += nameTable.name + '\0';
        nameTable.content = names;
        headers += section(nameTable, nameOfNames);
        const std::uint64_t headersAt = next_ + padded(names).size();
        std::string segments = segment({"", 0, PT_LOAD, 0, ""}, headersAt);
        std::size_t segmentCount = 1;
        for (const Piece& piece : pieces_) {
            if (piece.segment == PT_NULL) continue;
            segments += segment(piece, piece.content.size());
            ++segmentCount;
        }
        std::string file = header(headersAt, segmentCount) + segments;
        file.resize(kFirst, '\0');
        for (const Piece& piece : pieces_) file += padded(piece.content);
        return file + padded(names) + headers;
    }

  private:
    static constexpr std::uint64_t kFirst = 1024;  // room for the header and the segments before it

    struct Piece {
        std::string name;
        std::uint32_t type = SHT_NULL;
        std::uint32_t segment = PT_NULL;
        std::uint64_t offset = 0;
        std::string content;
    };

    static std::string padded(std::string content) {
        content.resize((content.size() + 3) / 4 * 4, '\0');
        return content;
    }

    std::string header(std::uint64_t sectionsAt, std::size_t segmentCount) const {
        std::string bytes = std::string(ELFMAG) + static_cast<char>(is64_ ? ELFCLASS64 : ELFCLASS32) +
                            static_cast<char>(bigEndian_ ? ELFDATA2MSB : ELFDATA2LSB) +
                            static_cast<char>(EV_CURRENT);
        bytes.resize(EI_NIDENT, '\0');
        bytes += number(fileType, 2) + number(machine, 2) + number(EV_CURRENT, 4);
        bytes += address(0) + address(is64_ ? sizeof(Elf64_Ehdr) : sizeof(Elf32_Ehdr)) + address(sectionsAt);
        bytes += number(0, 4) + number(is64_ ? sizeof(Elf64_Ehdr) : sizeof(Elf32_Ehdr), 2);
        bytes += number(is64_ ? sizeof(Elf64_Phdr) : sizeof(Elf32_Phdr), 2) + number(segmentCount, 2);
        bytes += number(is64_ ? sizeof(Elf64_Shdr) : sizeof(Elf32_Shdr), 2) + number(pieces_.size() + 2, 2);
        return bytes + number(pieces_.size() + 1, 2);
    }
    std::string segment(const Piece& piece, std::uint64_t size) const {
        std::string bytes = number(piece.segment, 4) + (is64_ ? number(0, 4) : "");
        bytes += address(piece.offset) + address(kBase + piece.offset) + address(0) + address(size) +
                 address(size);
        return bytes + (is64_ ? "" : number(0, 4)) + address(4);
    }
    std::string section(const Piece& piece, std::size_t name) const {
        std::string bytes =
            number(name, 4) + number(piece.type, 4) + address(0) + address(kBase + piece.offset);
        bytes += address(piece.offset) + address(piece.content.size()) + number(0, 4) + number(0, 4);
        return bytes + address(4) + address(0);
    }

    bool is64_;
    bool bigEndian_;
    std::uint64_t next_ = kFirst;
    std::vector<Piece> pieces_;
};
