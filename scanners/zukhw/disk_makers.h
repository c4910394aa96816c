#pragma once

#include <string>
#include <string_view>

// The maker of an MMC or SD card by its identification ("0x000003"), or empty. The two have lists of their
// own.
std::string cardMaker(std::string_view manufacturerId, bool isSd);

// Whether a disk of this vendor and model exists only in a virtual machine or a cloud.
bool isVirtualDisk(std::string_view vendor, std::string_view model);
