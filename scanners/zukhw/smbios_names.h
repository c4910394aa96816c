#pragma once

#include <string_view>

// What the codes in SMBIOS structures stand for, in the words of the standard (DSP0134). Empty for codes that
// mean "unknown", for reserved ones and for those newer than the tables here.

// Type 1, 2 and 3: the system, its boards and its enclosures.
std::string_view wakeUpTypeName(unsigned code);
std::string_view boardTypeName(unsigned code);
std::string_view chassisTypeName(unsigned code);  // without the lock bit
std::string_view chassisStateName(unsigned code);
std::string_view chassisSecurityName(unsigned code);
// Whether an enclosure of this type is made to be carried around.
bool isPortableChassis(unsigned code);

// Type 4.
std::string_view processorSocketName(unsigned code);

// Type 8, 9, 10 and 41: what can be plugged in, and what is soldered on.
std::string_view connectorName(unsigned code);
std::string_view portTypeName(unsigned code);
std::string_view slotTypeName(unsigned code);
std::string_view slotUsageName(unsigned code);
std::string_view slotLengthName(unsigned code);
std::string_view onboardDeviceName(unsigned code);  // without the enabled bit

// Type 16 and 17.
std::string_view arrayLocationName(unsigned code);
std::string_view arrayUseName(unsigned code);
std::string_view errorCorrectionName(unsigned code);
std::string_view memoryFormFactorName(unsigned code);
std::string_view memoryTypeName(unsigned code);
std::string_view memoryTechnologyName(unsigned code);
std::string_view memoryDetailName(unsigned bit);  // 0 to 15

// Type 24, 32 and 38.
std::string_view hardwareSecurityName(unsigned code);
std::string_view bootStatusName(unsigned code);
std::string_view ipmiInterfaceName(unsigned code);
