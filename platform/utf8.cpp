#include "platform/utf8.h"

#include <cstdint>
#include <cstring>

namespace {
constexpr std::size_t kStride = 8;

bool isAsciiStride(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, kStride);
    return (word & 0x8080808080808080u) == 0;
}

bool isUnicode(std::uint32_t code) {
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// Decodes the multi-byte character at the head of `bytes`; returns how many bytes it takes, 0 when there
// is none.
std::size_t decodeOne(std::string_view bytes, wchar_t* out) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    static constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;

    std::uint32_t code = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0) != 0x80) return 0;
        code = code << 6 | (next & 0x3F);
    }
    if (code < kSmallest[length] || !isUnicode(code)) return 0;
    *out = static_cast<wchar_t>(code);
    return length;
}
}  // namespace

wchar_t* decodeUtf8(std::string_view bytes, wchar_t* out) {
    while (!bytes.empty()) {
        if (bytes.size() >= kStride && isAsciiStride(bytes.data())) {
            for (std::size_t i = 0; i < kStride; ++i) out[i] = bytes[i];
            out += kStride;
            bytes.remove_prefix(kStride);
            continue;
        }
        const auto byte = static_cast<unsigned char>(bytes[0]);
        std::size_t used = 1;
        *out = byte;
        if (byte >= 0x80) {
            used = decodeOne(bytes, out);
            if (used == 0) *out = static_cast<wchar_t>(kReplacementCharacter);
        }
        ++out;
        bytes.remove_prefix(used == 0 ? 1 : used);
    }
    return out;
}

char* encodeUtf8(wchar_t character, char* out) {
    auto code = static_cast<std::uint32_t>(character);  // NOLINT(bugprone-signed-char-misuse): a wide one
    if (!isUnicode(code)) code = kReplacementCharacter;
    const auto put = [&out](std::uint32_t byte) { *out++ = static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
        return out;
    }
    if (code < 0x800) {
        put(0xC0 | code >> 6);
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
    return out;
}
