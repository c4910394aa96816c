#include "scanners/zukhw/smbios_names.h"

#include <algorithm>

#include "scanners/zukhw/code_names.h"

std::string_view wakeUpTypeName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",           "Other",        "",         "APM Timer",         "Modem Ring",
        "LAN Remote", "Power Switch", "PCI PME#", "AC Power Restored",
    };
    return nameOfCode(kNames, code);
}

std::string_view boardTypeName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",
        "",
        "Other",
        "Server Blade",
        "Connectivity Switch",
        "System Management Module",
        "Processor Module",
        "I/O Module",
        "Memory Module",
        "Daughter Board",
        "Motherboard",
        "Processor+Memory Module",
        "Processor+I/O Module",
        "Interconnect Board",
    };
    return nameOfCode(kNames, code);
}

std::string_view chassisTypeName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "",
        "Other",
        "",
        "Desktop",
        "Low Profile Desktop",
        "Pizza Box",
        "Mini Tower",
        "Tower",
        "Portable",
        "Laptop",
        "Notebook",
        "Hand Held",
        "Docking Station",
        "All in One",
        "Sub Notebook",
        "Space-saving",
        "Lunch Box",
        "Main Server Chassis",
        "Expansion Chassis",
        "SubChassis",
        "Bus Expansion Chassis",
        "Peripheral Chassis",
        "RAID Chassis",
        "Rack Mount Chassis",
        "Sealed-case PC",
        "Multi-system Chassis",
        "Compact PCI",
        "Advanced TCA",
        "Blade",
        "Blade Enclosure",
        "Tablet",
        "Convertible",
        "Detachable",
        "IoT Gateway",
        "Embedded PC",
        "Mini PC",
        "Stick PC",
    };
    return nameOfCode(kNames, code);
}

bool isPortableChassis(unsigned code) {
    // Portable, Laptop, Notebook, Hand Held, Sub Notebook, Tablet, Convertible, Detachable
    static constexpr unsigned kPortable[] = {0x08, 0x09, 0x0A, 0x0B, 0x0E, 0x1E, 0x1F, 0x20};
    return std::find(std::begin(kPortable), std::end(kPortable), code) != std::end(kPortable);
}

std::string_view chassisStateName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "", "Other", "", "Safe", "Warning", "Critical", "Non-recoverable",
    };
    return nameOfCode(kNames, code);
}

std::string_view chassisSecurityName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "", "Other", "", "None", "External Interface Locked Out", "External Interface Enabled",
    };
    return nameOfCode(kNames, code);
}

std::string_view hardwareSecurityName(unsigned code) {
    static constexpr std::string_view kNames[] = {"Disabled", "Enabled", "Not Implemented"};
    return nameOfCode(kNames, code);
}

std::string_view bootStatusName(unsigned code) {
    static constexpr std::string_view kNames[] = {
        "No errors detected",
        "No bootable media",
        "Operating system failed to load",
        "Firmware-detected hardware failure",
        "Operating system-detected hardware failure",
        "User-requested boot",
        "System security violation",
        "Previously-requested image",
        "System watchdog timer expired",
    };
    if (code >= 192) return "Product-specific";
    if (code >= 128) return "OEM-specific";
    return nameOfCode(kNames, code);
}

std::string_view ipmiInterfaceName(unsigned code) {
    static constexpr std::string_view kNames[] = {"", "KCS", "SMIC", "BT", "SSIF"};
    return nameOfCode(kNames, code);
}
