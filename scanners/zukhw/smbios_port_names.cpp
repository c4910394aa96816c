// The codes of ports (type 8), slots (type 9) and onboard devices (types 10 and 41).
#include "scanners/zukhw/code_names.h"
#include "scanners/zukhw/smbios_names.h"

std::string_view connectorName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "None",
        "Centronics",
        "Mini Centronics",
        "Proprietary",
        "DB-25 male",
        "DB-25 female",
        "DB-15 male",
        "DB-15 female",
        "DB-9 male",
        "DB-9 female",
        "RJ-11",
        "RJ-45",
        "50-pin MiniSCSI",
        "Mini-DIN",
        "Micro-DIN",
        "PS/2",
        "Infrared",
        "HP-HIL",
        "Access Bus (USB)",
        "SSA SCSI",
        "Circular DIN-8 male",
        "Circular DIN-8 female",
        "On Board IDE",
        "On Board Floppy",
        "9-pin Dual Inline",
        "25-pin Dual Inline",
        "50-pin Dual Inline",
        "68-pin Dual Inline",
        "On Board Sound Input From CD-ROM",
        "Mini Centronics Type-14",
        "Mini Centronics Type-26",
        "Mini Jack (headphones)",
        "BNC",
        "IEEE 1394",
        "SAS/SATA Plug Receptacle",
        "USB Type-C Receptacle",
    };
    static constexpr std::string_view kLateNames[] = {
        "PC-98", "PC-98Hireso", "PC-H98", "PC-98Note", "PC-98Full",
    };
    constexpr unsigned kLate = 0xA0;
    if (code == 0xFF) return "Other";
    return code < kLate ? nameOfCode(kNames, code) : nameOfCode(kLateNames, code - kLate);
}

std::string_view portTypeName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "None",
        "Parallel Port XT/AT Compatible",
        "Parallel Port PS/2",
        "Parallel Port ECP",
        "Parallel Port EPP",
        "Parallel Port ECP/EPP",
        "Serial Port XT/AT Compatible",
        "Serial Port 16450 Compatible",
        "Serial Port 16550 Compatible",
        "Serial Port 16550A Compatible",
        "SCSI Port",
        "MIDI Port",
        "Joystick Port",
        "Keyboard Port",
        "Mouse Port",
        "SSA SCSI",
        "USB",
        "FireWire (IEEE P1394)",
        "PCMCIA Type I",
        "PCMCIA Type II",
        "PCMCIA Type III",
        "Cardbus",
        "Access Bus Port",
        "SCSI II",
        "SCSI Wide",
        "PC-98",
        "PC-98 Hireso",
        "PC-H98",
        "Video Port",
        "Audio Port",
        "Modem Port",
        "Network Port",
        "SATA",
        "SAS",
        "MFDP (Multi-Function Display Port)",
        "Thunderbolt",
    };
    if (code == 0xA0) return "8251 Compatible";
    if (code == 0xA1) return "8251 FIFO Compatible";
    if (code == 0xFF) return "Other";
    return nameOfCode(kNames, code);
}

std::string_view slotTypeName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",
        "Other",
        "",
        "ISA",
        "MCA",
        "EISA",
        "PCI",
        "PC Card (PCMCIA)",
        "VL-VESA",
        "Proprietary",
        "Processor Card Slot",
        "Proprietary Memory Card Slot",
        "I/O Riser Card Slot",
        "NuBus",
        "PCI - 66MHz Capable",
        "AGP",
        "AGP 2X",
        "AGP 4X",
        "PCI-X",
        "AGP 8X",
        "M.2 Socket 1-DP (Mechanical Key A)",
        "M.2 Socket 1-SD (Mechanical Key E)",
        "M.2 Socket 2 (Mechanical Key B)",
        "M.2 Socket 3 (Mechanical Key M)",
        "MXM Type I",
        "MXM Type II",
        "MXM Type III (standard connector)",
        "MXM Type III (HE connector)",
        "MXM Type IV",
        "MXM 3.0 Type A",
        "MXM 3.0 Type B",
        "PCI Express Gen 2 SFF-8639 (U.2)",
        "PCI Express Gen 3 SFF-8639 (U.2)",
        "PCI Express Mini 52-pin (CEM spec. 2.0) with bottom-side keep-outs",
        "PCI Express Mini 52-pin (CEM spec. 2.0) without bottom-side keep-outs",
        "PCI Express Mini 76-pin (CEM spec. 2.0)",
        "PCI Express Gen 4 SFF-8639 (U.2)",
        "PCI Express Gen 5 SFF-8639 (U.2)",
        "OCP NIC 3.0 Small Form Factor (SFF)",
        "OCP NIC 3.0 Large Form Factor (LFF)",
        "OCP NIC Prior to 3.0",
    };
    static constexpr std::string_view kLateNames[] = {
        "PC-98/C20",
        "PC-98/C24",
        "PC-98/E",
        "PC-98/Local Bus",
        "PC-98/Card",
        "PCI Express",
        "PCI Express x1",
        "PCI Express x2",
        "PCI Express x4",
        "PCI Express x8",
        "PCI Express x16",
        "PCI Express Gen 2",
        "PCI Express Gen 2 x1",
        "PCI Express Gen 2 x2",
        "PCI Express Gen 2 x4",
        "PCI Express Gen 2 x8",
        "PCI Express Gen 2 x16",
        "PCI Express Gen 3",
        "PCI Express Gen 3 x1",
        "PCI Express Gen 3 x2",
        "PCI Express Gen 3 x4",
        "PCI Express Gen 3 x8",
        "PCI Express Gen 3 x16",
        "",
        "PCI Express Gen 4",
        "PCI Express Gen 4 x1",
        "PCI Express Gen 4 x2",
        "PCI Express Gen 4 x4",
        "PCI Express Gen 4 x8",
        "PCI Express Gen 4 x16",
        "PCI Express Gen 5",
        "PCI Express Gen 5 x1",
        "PCI Express Gen 5 x2",
        "PCI Express Gen 5 x4",
        "PCI Express Gen 5 x8",
        "PCI Express Gen 5 x16",
        "PCI Express Gen 6 and Beyond",
        "Enterprise and Datacenter 1U E1 Form Factor Slot (EDSFF E1.S, E1.L)",
        "Enterprise and Datacenter 3\" E3 Form Factor Slot (EDSFF E3.S, E3.L)",
    };
    constexpr unsigned kLate = 0xA0;
    if (code == 0x30) return "CXL Flexbus 1.0";
    return code < kLate ? nameOfCode(kNames, code) : nameOfCode(kLateNames, code - kLate);
}

std::string_view slotUsageName(unsigned code) {
    static constexpr std::string_view kNames[] = {"", "Other", "", "Available", "In Use", "Unavailable"};
    return nameOfCode(kNames, code);
}

std::string_view slotLengthName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "", "Other", "", "Short", "Long", "2.5\" drive form factor", "3.5\" drive form factor",
    };
    return nameOfCode(kNames, code);
}

std::string_view onboardDeviceName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",
        "Other",
        "",
        "Video",
        "SCSI Controller",
        "Ethernet",
        "Token Ring",
        "Sound",
        "PATA Controller",
        "SATA Controller",
        "SAS Controller",
        "Wireless LAN",
        "Bluetooth",
        "WWAN",
        "eMMC",
        "NVMe Controller",
        "UFS Controller",
    };
    return nameOfCode(kNames, code);
}
