// The codes of memory arrays (type 16) and memory devices (type 17).
#include "scanners/zukhw/code_names.h"
#include "scanners/zukhw/smbios_names.h"

std::string_view arrayLocationName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",
        "Other",
        "",
        "System Board",
        "ISA Add-on Card",
        "EISA Add-on Card",
        "PCI Add-on Card",
        "MCA Add-on Card",
        "PCMCIA Add-on Card",
        "Proprietary Add-on Card",
        "NuBus",
    };
    static constexpr std::string_view kLateNames[] = {
        "PC-98/C20 Add-on Card", "PC-98/C24 Add-on Card", "PC-98/E Add-on Card",
        "PC-98/Local Bus",       "CXL Add-on Card",
    };
    constexpr unsigned kLate = 0xA0;
    return code < kLate ? nameOfCode(kNames, code) : nameOfCode(kLateNames, code - kLate);
}

std::string_view arrayUseName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "", "Other", "", "System Memory", "Video Memory", "Flash Memory", "Non-volatile RAM", "Cache Memory",
    };
    return nameOfCode(kNames, code);
}

std::string_view errorCorrectionName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "", "Other", "", "None", "Parity", "Single-bit ECC", "Multi-bit ECC", "CRC",
    };
    return nameOfCode(kNames, code);
}

std::string_view memoryFormFactorName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",        "Other",  "",
        "SIMM",    "SIP",    "Chip",
        "DIP",     "ZIP",    "Proprietary Card",
        "DIMM",    "TSOP",   "Row of Chips",
        "RIMM",    "SODIMM", "SRIMM",
        "FB-DIMM", "Die",    "CAMM",
    };
    return nameOfCode(kNames, code);
}

std::string_view memoryTypeName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",
        "Other",
        "",
        "DRAM",
        "EDRAM",
        "VRAM",
        "SRAM",
        "RAM",
        "ROM",
        "Flash",
        "EEPROM",
        "FEPROM",
        "EPROM",
        "CDRAM",
        "3DRAM",
        "SDRAM",
        "SGRAM",
        "RDRAM",
        "DDR",
        "DDR2",
        "DDR2 FB-DIMM",
        "",
        "",
        "",
        "DDR3",
        "FBD2",
        "DDR4",
        "LPDDR",
        "LPDDR2",
        "LPDDR3",
        "LPDDR4",
        "Logical non-volatile device",
        "HBM",
        "HBM2",
        "DDR5",
        "LPDDR5",
        "HBM3",
    };
    return nameOfCode(kNames, code);
}

std::string_view memoryTechnologyName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",       "Other", "", "DRAM", "NVDIMM-N", "NVDIMM-F", "NVDIMM-P", "Intel Optane persistent memory",
        "MRDIMM",
    };
    return nameOfCode(kNames, code);
}

std::string_view memoryDetailName(unsigned bit) {
    static constexpr std::string_view kNames[] = {
        "",
        "Other",
        "",
        "Fast-paged",
        "Static Column",
        "Pseudo-static",
        "RAMBUS",
        "Synchronous",
        "CMOS",
        "EDO",
        "Window DRAM",
        "Cache DRAM",
        "Non-volatile",
        "Registered (Buffered)",
        "Unbuffered (Unregistered)",
        "LRDIMM",
    };
    return nameOfCode(kNames, bit);
}
