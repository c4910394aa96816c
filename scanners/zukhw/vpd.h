#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Readers of a SCSI disk's vital product data pages (SPC-4), as /sys keeps them. Every length in a page is
// checked against the bytes that there are; a page of another number or a field outside it gives nothing.

// Page 80h: the unit's serial number, raw.
std::string_view vpdSerial(std::string_view page);

// Page 83h: the unit's name as "naa.5000c500...", else "eui.0025385...", or empty.
std::string vpdName(std::string_view page);

// What an ATA disk says of itself (IDENTIFY DEVICE), inside page 89h.
struct AtaIdentity {
    std::string serial;          // raw, blanks at the ends included
    std::string revision;        // of the firmware, in full
    std::uint16_t rotation = 0;  // see rotationRpm
    bool serialAta = false;      // SATA; otherwise parallel
};
std::optional<AtaIdentity> vpdAtaIdentity(std::string_view page);

// Page B1h: the rotation code of the medium; 0 when not told.
std::uint16_t vpdRotation(std::string_view page);

// Revolutions per minute by the code that SCSI and ATA share; no value for media that do not turn and for
// disks that do not tell.
std::optional<unsigned> rotationRpm(std::uint16_t code);
