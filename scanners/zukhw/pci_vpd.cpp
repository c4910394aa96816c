#include "scanners/zukhw/pci_vpd.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr unsigned kReadOnlyFields = 0x90;
constexpr unsigned kLarge = 0x80;  // the other resources have their length in the tag
constexpr unsigned kEnd = 0x78;

unsigned byteAt(std::string_view data, std::size_t at) {
    return at < data.size() ? static_cast<unsigned char>(data[at]) : 0;
}

// Fields of two letters, a byte of length and as many bytes of value.
std::string_view serialIn(std::string_view fields) {
    while (fields.size() >= 3) {
        const std::string_view value = fields.substr(3, byteAt(fields, 2));
        if (value.size() < byteAt(fields, 2)) return {};
        if (fields.substr(0, 2) == "SN") return value;
        fields.remove_prefix(3 + value.size());
    }
    return {};
}

}  // namespace

std::string_view pciSerialNumber(std::string_view data) {
    while (!data.empty()) {
        const unsigned tag = byteAt(data, 0);
        const bool large = (tag & kLarge) != 0;
        if (tag == kEnd || tag == 0) return {};
        const std::size_t header = large ? 3 : 1;
        const std::size_t length = large ? byteAt(data, 1) | byteAt(data, 2) << 8 : tag & 7U;
        data.remove_prefix(std::min(header, data.size()));
        if (tag == kReadOnlyFields) return serialIn(data.substr(0, length));
        data.remove_prefix(std::min(length, data.size()));
    }
    return {};
}
