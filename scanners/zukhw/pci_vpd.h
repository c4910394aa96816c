#pragma once

#include <string_view>

// The serial number (keyword SN) in a PCI device's vital product data, raw; empty when the data has none, or
// breaks off or goes wrong before it.
std::string_view pciSerialNumber(std::string_view data);
