#include "scanners/zuksw/formats/go_build_info.h"

#include <algorithm>

#include "scanners/shared/packages/text.h"

namespace zuksw {

namespace {

constexpr std::string_view kMagic = "\xFF Go buildinf:";
constexpr std::size_t kHeaderSize = 32;

struct Texts {
    std::string_view version;
    std::string_view modules;
};

// The section from the header on: newer linkers put the texts behind it.
std::optional<std::string_view> findHeader(const Elf& elf) {
    const std::optional<std::string_view> section = elf.sectionBytes(".go.buildinfo");
    const bool whole = section && section->size() >= kHeaderSize;
    if (!whole || section->substr(0, kMagic.size()) != kMagic) return std::nullopt;
    return section;
}

// A length of variable width, then so many bytes.
std::optional<std::string_view> takeInlineText(std::string_view& bytes) {
    std::uint64_t length = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        if (bytes.empty()) return std::nullopt;
        const auto byte = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        length |= std::uint64_t(byte & 0x7FU) << shift;
        if (byte < 0x80) break;
    }
    if (length > bytes.size()) return std::nullopt;
    const std::string_view text = bytes.substr(0, length);
    bytes.remove_prefix(length);
    return text;
}

// Before Go 1.18 the header holds the address of a pair: address and length of the text.
std::string_view textAt(const Elf& elf, std::uint64_t address, unsigned width, Bytes::Order order) {
    const Bytes bytes(elf.bytes().all(), order);
    const auto pair = elf.offsetOf(address);
    if (!pair) return {};
    const auto text = elf.offsetOf(bytes.numberOr0(*pair, width));
    const std::uint64_t length = bytes.numberOr0(*pair + width, width);
    if (!text) return {};
    return bytes.piece(*text, length).value_or("");
}

std::optional<Texts> readTexts(const Elf& elf, std::string_view header) {
    const auto flags = static_cast<unsigned char>(header[15]);
    if ((flags & 2U) != 0) {
        header.remove_prefix(kHeaderSize);
        const auto version = takeInlineText(header);
        const auto modules = version ? takeInlineText(header) : std::nullopt;
        if (!modules) return std::nullopt;
        return Texts{*version, *modules};
    }
    const auto width = static_cast<unsigned char>(header[14]);
    if (width != 4 && width != 8) return std::nullopt;
    const auto order = (flags & 1U) != 0 ? Bytes::Order::Big : Bytes::Order::Little;
    const Bytes bytes(header, order);
    return Texts{textAt(elf, bytes.numberOr0(16, width), width, order),
                 textAt(elf, bytes.numberOr0(16U + width, width), width, order)};
}

// The text stands between two marks of 16 bytes and ends with a line end; anything else is no list of
// modules.
std::string_view withoutMarks(std::string_view modules) {
    constexpr std::size_t kMark = 16;
    if (modules.size() < 2 * kMark + 1 || modules[modules.size() - kMark - 1] != '\n') return {};
    return modules.substr(kMark, modules.size() - 2 * kMark);
}

std::string_view takeField(std::string_view& line) {
    const std::string_view field = line.substr(0, line.find('\t'));
    line.remove_prefix(std::min(field.size() + 1, line.size()));
    return field;
}

// Lines "path P", "mod P V SUM", "dep P V SUM", "=> P V SUM" for what replaces the one before; tabs between.
void readModules(std::string_view text, GoBuildInfo* info) {
    GoModule* last = nullptr;
    while (!text.empty()) {
        std::string_view line = takeLine(text);
        const std::string_view kind = takeField(line);
        const std::string_view path = takeField(line);
        const std::string_view version = takeField(line);
        if (kind == "path") {
            info->path = path;
        } else if (kind == "mod") {
            info->main = {path, version};
            last = &info->main;
        } else if (kind == "dep") {
            info->dependencies.push_back({path, version});
            last = &info->dependencies.back();
        } else if (kind == "=>" && last != nullptr) {
            last->version = version;
        }
    }
}

}  // namespace

std::optional<GoBuildInfo> readGoBuildInfo(const Elf& elf) {
    const std::optional<std::string_view> header = findHeader(elf);
    if (!header) return std::nullopt;
    const std::optional<Texts> texts = readTexts(elf, *header);
    if (!texts || texts->version.empty()) return std::nullopt;
    GoBuildInfo info;
    info.goVersion = texts->version;
    readModules(withoutMarks(texts->modules), &info);
    return info;
}

}  // namespace zuksw
