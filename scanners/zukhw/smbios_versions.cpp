#include "scanners/zukhw/smbios_versions.h"

#include <algorithm>

namespace {

// From this offset on, a structure of this type has fields that came with this version.
struct Addition {
    unsigned type;
    unsigned offset;
    unsigned version;  // major * 256 + minor
};
constexpr Addition kAdditions[] = {
    {0, 0x14, 0x0204},  {0, 0x18, 0x0301},  {1, 0x08, 0x0201},  {1, 0x19, 0x0204},  {3, 0x09, 0x0201},
    {3, 0x0D, 0x0203},  {4, 0x1A, 0x0201},  {4, 0x20, 0x0203},  {4, 0x23, 0x0205},  {4, 0x28, 0x0206},
    {4, 0x2A, 0x0300},  {4, 0x30, 0x0306},  {4, 0x32, 0x0308},  {7, 0x0F, 0x0201},  {7, 0x13, 0x0301},
    {9, 0x0C, 0x0201},  {9, 0x0D, 0x0206},  {9, 0x11, 0x0302},  {16, 0x0F, 0x0207}, {17, 0x15, 0x0203},
    {17, 0x1B, 0x0206}, {17, 0x1C, 0x0207}, {17, 0x22, 0x0208}, {17, 0x28, 0x0302}, {17, 0x54, 0x0303},
    {19, 0x0F, 0x0207}, {20, 0x13, 0x0207},
};

}  // namespace

std::size_t smbiosKnownLength(unsigned type, std::size_t length, std::optional<unsigned> version) {
    if (!version) return length;
    for (const Addition& addition : kAdditions) {
        if (addition.type == type && addition.version > *version)
            return std::min<std::size_t>(length, addition.offset);
    }
    return length;
}
