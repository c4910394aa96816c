#include "scanners/zukhw/cpu_vendors.h"

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

struct NamedVendor {
    std::string_view id;
    const char* name;
};
constexpr NamedVendor kVendors[] = {
    {"GenuineIntel", "Intel"},     {"AuthenticAMD", "AMD"},       {"HygonGenuine", "Hygon"},
    {"CentaurHauls", "VIA"},       {"VIA VIA VIA", "VIA"},        {"Shanghai", "Zhaoxin"},
    {"GenuineTMx86", "Transmeta"}, {"TransmetaCPU", "Transmeta"}, {"CyrixInstead", "Cyrix"},
    {"Geode by NSC", "National"},  {"NexGenDriven", "NexGen"},    {"RiseRiseRise", "Rise"},
    {"SiS SiS SiS", "SiS"},        {"UMC UMC UMC", "UMC"},        {"Vortex86 SoC", "DMP"},
    {"Genuine  RDC", "RDC"},       {"GenuineIotel", "Intel"},     {"IBM/S390", "IBM"},
};

struct NumberedVendor {
    unsigned id;
    const char* name;
};
constexpr NumberedVendor kImplementers[] = {
    {0x41, "ARM"},       {0x42, "Broadcom"},  {0x43, "Cavium"},   {0x44, "DEC"},
    {0x46, "Fujitsu"},   {0x48, "HiSilicon"}, {0x49, "Infineon"}, {0x4D, "Motorola/Freescale"},
    {0x4E, "NVIDIA"},    {0x50, "APM"},       {0x51, "Qualcomm"}, {0x53, "Samsung"},
    {0x56, "Marvell"},   {0x61, "Apple"},     {0x66, "Faraday"},  {0x69, "Intel"},
    {0x6D, "Microsoft"}, {0x70, "Phytium"},   {0xC0, "Ampere"},
};
constexpr NumberedVendor kRiscvVendors[] = {
    {0x31E, "Andes"}, {0x489, "SiFive"}, {0x5B7, "T-Head"}, {0x61F, "Tenstorrent"}, {0x710, "SpacemiT"},
};

template <std::size_t N>
std::string findNumbered(const NumberedVendor (&table)[N], std::uint64_t id) {
    for (const NumberedVendor& vendor : table) {
        if (vendor.id == id) return vendor.name;
    }
    return "";
}

}  // namespace

std::string cpuVendorName(std::string_view vendorId) {
    for (const NamedVendor& vendor : kVendors) {
        if (vendor.id == trim(vendorId)) return vendor.name;
    }
    return std::string(vendorId);
}

std::string armImplementerName(unsigned implementer) {
    return findNumbered(kImplementers, implementer);
}

std::string riscvVendorName(std::string_view vendorId) {
    const auto id = parseHex(vendorId);
    return id ? findNumbered(kRiscvVendors, *id) : "";
}
