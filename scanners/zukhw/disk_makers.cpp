#include "scanners/zukhw/disk_makers.h"

#include <cstdint>
#include <optional>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

struct Maker {
    std::uint64_t id;
    const char* name;
};
constexpr Maker kMmcMakers[] = {
    {0x02, "SanDisk"},  {0x11, "Toshiba"}, {0x13, "Micron"},   {0x15, "Samsung"},
    {0x2C, "Micron"},   {0x45, "SanDisk"}, {0x70, "Kingston"}, {0x88, "Foresee"},
    {0x90, "SK Hynix"}, {0x9B, "YMTC"},    {0xD6, "Foresee"},  {0xFE, "Micron"},
};
constexpr Maker kSdMakers[] = {
    {0x01, "Panasonic"}, {0x02, "Toshiba"}, {0x03, "SanDisk"},       {0x1B, "Samsung"},  {0x1D, "ADATA"},
    {0x27, "Phison"},    {0x28, "Lexar"},   {0x31, "Silicon Power"}, {0x41, "Kingston"}, {0x74, "Transcend"},
    {0x76, "Patriot"},   {0x82, "Sony"},    {0x9C, "Angelbird"},
};

template <std::size_t N>
std::string findMaker(const Maker (&makers)[N], std::optional<std::uint64_t> id) {
    for (const Maker& maker : makers) {
        if (id == maker.id) return maker.name;
    }
    return "";
}

constexpr std::string_view kVirtualVendors[] = {"QEMU", "VMware", "Msft", "VBOX", "Google", "Nutanix"};
constexpr std::string_view kVirtualModels[] = {
    "QEMU ",
    "VBOX ",
    "VMware ",
    "Virtual Disk",
    "Amazon Elastic Block Store",
    "Microsoft NVMe Direct Disk",
    "PersistentDisk",
    "VDASD",  // of a POWER partition
    "nvme_card-pd",
    "Parallels ",
    "MSFT NVMe Accelerator",
};

}  // namespace

std::string cardMaker(std::string_view manufacturerId, bool isSd) {
    const auto id = parseHex(manufacturerId);
    return isSd ? findMaker(kSdMakers, id) : findMaker(kMmcMakers, id);
}

bool isVirtualDisk(std::string_view vendor, std::string_view model) {
    for (const std::string_view known : kVirtualVendors) {
        if (vendor == known) return true;
    }
    for (const std::string_view known : kVirtualModels) {
        if (startsWith(model, known)) return true;
    }
    return false;
}
