#pragma once

#include <string>
#include <string_view>

// The maker's name of the identification that an x86 or s390 CPU gives ("GenuineIntel"); what is not known is
// given as it stands.
std::string cpuVendorName(std::string_view vendorId);

// The name of an ARM implementer by its code, or empty.
std::string armImplementerName(unsigned implementer);

// The name of a RISC-V vendor by the text of its mvendorid ("0x489"), or empty.
std::string riscvVendorName(std::string_view vendorId);
