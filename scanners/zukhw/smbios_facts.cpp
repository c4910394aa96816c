#include "scanners/zukhw/smbios_facts.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/uuid.h"

namespace {

constexpr unsigned kFirmware = 0;
constexpr unsigned kSystem = 1;
constexpr unsigned kBoard = 2;
constexpr unsigned kChassis = 3;
constexpr unsigned kMotherboard = 0x0A;

// Two bytes, major and minor; FFh says that the firmware does not use them.
std::string releaseAt(const SmbiosStructure& firmware, std::size_t offset) {
    const auto major = firmware.byte(offset);
    const auto minor = firmware.byte(offset + 1);
    if (!major || !minor || *major == 0xFF || *minor == 0xFF) return "";
    return std::to_string(*major) + '.' + std::to_string(*minor);
}

// As the kernel shows it, two numbers and a point; empty for anything else.
std::string releaseOf(const std::string& text) {
    const auto isNumber = [](std::string_view part) {
        return !part.empty() && part.find_first_not_of("0123456789") == std::string_view::npos;
    };
    const std::vector<std::string_view> parts = split(text, '.');
    return parts.size() == 2 && isNumber(parts[0]) && isNumber(parts[1]) ? text : "";
}

}  // namespace

SmbiosFacts::SmbiosFacts(Machine& machine) {
    const Smbios& smbios = machine.shared<Smbios>();
    if (smbios.available()) {
        readTable(smbios);
    } else {
        readFiles(machine);
    }
}

void SmbiosFacts::readTable(const Smbios& smbios) {
    constexpr unsigned kTypeBits = 0x7F;
    if (const SmbiosStructure* system = smbios.first(kSystem)) {
        uuid_ = smbiosUuid(system->bytes(0x08, 16), smbios.version());
    }
    if (const SmbiosStructure* chassis = smbios.first(kChassis)) {
        if (const auto type = chassis->byte(0x05)) chassisType_ = *type & kTypeBits;
    }
    if (const SmbiosStructure* firmware = smbios.first(kFirmware)) {
        biosRelease_ = releaseAt(*firmware, 0x14);
        controllerRelease_ = releaseAt(*firmware, 0x16);
    }
}

void SmbiosFacts::readFiles(Machine& machine) {
    static const std::string kDirectory = "sys/class/dmi/id/";
    if (!machine.exists(kDirectory)) return;
    uuid_ = cleanUuid(machine.text(kDirectory + "product_uuid"));
    const auto type = machine.number(kDirectory + "chassis_type");
    if (type && *type <= 0x7F) chassisType_ = static_cast<unsigned>(*type);
    biosRelease_ = releaseOf(machine.text(kDirectory + "bios_release"));
    controllerRelease_ = releaseOf(machine.text(kDirectory + "ec_firmware_release"));
}

const SmbiosStructure* mainBoard(const Smbios& smbios) {
    const std::vector<const SmbiosStructure*> boards = smbios.ofType(kBoard);
    const auto isMain = [](const SmbiosStructure* board) { return board->byte(0x0D) == kMotherboard; };
    const auto main = std::find_if(boards.begin(), boards.end(), isMain);
    if (main != boards.end()) return *main;
    return boards.empty() ? nullptr : boards.front();
}

std::string mainBoardString(const Smbios& smbios, std::size_t offset) {
    const SmbiosStructure* board = mainBoard(smbios);
    return board != nullptr ? std::string(board->string(offset)) : smbios.string(kBoard, offset);
}
