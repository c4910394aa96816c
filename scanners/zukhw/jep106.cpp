#include "scanners/zukhw/jep106.h"

#include <algorithm>
#include <vector>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

struct Maker {
    unsigned continuations;
    unsigned identity;  // without parity
    std::string_view name;
};

// Those who make memory chips or modules.
constexpr Maker kMakers[] = {
    {0, 0x01, "AMD"},
    {0, 0x04, "Fujitsu"},
    {0, 0x07, "Hitachi"},
    {0, 0x09, "Intel"},
    {0, 0x10, "NEC"},
    {0, 0x17, "Texas Instruments"},
    {0, 0x18, "Toshiba"},
    {0, 0x1C, "Mitsubishi"},
    {0, 0x20, "STMicroelectronics"},
    {0, 0x24, "IBM"},
    {0, 0x2C, "Micron Technology"},
    {0, 0x2D, "SK hynix"},
    {0, 0x30, "Sharp"},
    {0, 0x35, "SpecTek"},
    {0, 0x40, "Mosel Vitelic"},
    {0, 0x41, "Infineon"},
    {0, 0x4E, "Samsung"},
    {0, 0x5A, "Winbond"},
    {0, 0x60, "LG Semiconductor"},
    {1, 0x11, "Dataram"},
    {1, 0x14, "Smart Modular"},
    {1, 0x18, "Kingston"},
    {1, 0x28, "STEC"},
    {1, 0x32, "Mushkin"},
    {1, 0x3A, "PNY"},
    {1, 0x40, "Viking"},
    {1, 0x4F, "Transcend"},
    {1, 0x7A, "Apacer"},
    {2, 0x1E, "Corsair"},
    {2, 0x7E, "Elpida"},
    {3, 0x0B, "Nanya"},
    {3, 0x25, "Kingmax"},
    {3, 0x5A, "Swissbit"},
    {4, 0x30, "OCZ"},
    {4, 0x43, "Ramaxel"},
    {4, 0x4B, "ADATA"},
    {4, 0x4D, "G.Skill"},
    {4, 0x6F, "Team Group"},
    {5, 0x02, "Patriot"},
    {5, 0x1B, "Crucial"},
    {5, 0x51, "Qimonda"},
    {6, 0x71, "Innodisk"},
    {10, 0x11, "CXMT"},
};

constexpr unsigned kWithoutParity = 0x7F;
constexpr unsigned kContinuation = 0x7F;

bool hasOddParity(unsigned byte) {
    unsigned bits = 0;
    for (; byte != 0; byte >>= 1U) bits += byte & 1U;
    return bits % 2 == 1;
}

// The bytes that a text of hex digits stands for; empty when it is none.
std::vector<unsigned> hexBytes(std::string_view text) {
    if (startsWith(text, "0x") || startsWith(text, "0X")) text.remove_prefix(2);
    std::vector<unsigned> bytes;
    if (text.size() % 2 != 0) return bytes;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const auto byte = parseHex(text.substr(at, 2));
        if (!byte || text.find_first_of(" xX", at) < at + 2) return {};
        bytes.push_back(static_cast<unsigned>(*byte));
    }
    return bytes;
}

}  // namespace

std::string_view jep106Name(unsigned continuations, unsigned identity) {
    const auto isMaker = [&](const Maker& maker) {
        return maker.continuations == (continuations & kWithoutParity) &&
               maker.identity == (identity & kWithoutParity);
    };
    const auto found = std::find_if(std::begin(kMakers), std::end(kMakers), isMaker);
    return found == std::end(kMakers) ? std::string_view() : found->name;
}

std::string_view jep106NameOfText(std::string_view text) {
    const std::vector<unsigned> bytes = hexBytes(text);
    if (bytes.size() < 2) return {};
    const auto isIdentity = [](unsigned byte) { return byte != kContinuation; };
    const auto first = std::find_if(bytes.begin(), bytes.end(), isIdentity);
    if (first == bytes.end()) return {};
    const auto continuations = static_cast<unsigned>(first - bytes.begin());
    // The whole field of old modules: continuation codes, the identity, zeros.
    if (continuations > 0 || bytes[1] == 0) return jep106Name(continuations, *first);
    // The two bytes of newer ones, number of continuation codes first. Every byte has odd parity, which tells
    // them from a name that happens to be of hex digits; but some firmware leaves that of a zero out.
    if (!hasOddParity(bytes[1]) || (bytes[0] != 0 && !hasOddParity(bytes[0]))) return {};
    return jep106Name(bytes[0], bytes[1]);
}
