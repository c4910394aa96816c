#pragma once

#include <optional>
#include <string>

#include "scanners/zukhw/smbios.h"

// What several groups want of the firmware beyond plain strings: from the table, else from the files that the
// kernel makes of it; machine.shared<SmbiosFacts>().
class SmbiosFacts {
  public:
    explicit SmbiosFacts(Machine& machine);

    // As smbiosUuid writes it, raw; empty when unknown or for root only.
    const std::string& uuid() const { return uuid_; }
    // The code of the first enclosure's type, without the lock bit.
    std::optional<unsigned> chassisType() const { return chassisType_; }
    // "5.12"; empty when the firmware does not use it.
    const std::string& biosRelease() const { return biosRelease_; }
    const std::string& controllerRelease() const { return controllerRelease_; }

  private:
    void readTable(const Smbios& smbios);
    void readFiles(Machine& machine);

    std::string uuid_;
    std::optional<unsigned> chassisType_;
    std::string biosRelease_;
    std::string controllerRelease_;
};

// The board (type 2) that the processors sit on, else the first one; null when there is none.
const SmbiosStructure* mainBoard(const Smbios& smbios);

// A string of that board; without a table what the kernel shows of it.
std::string mainBoardString(const Smbios& smbios, std::size_t offset);
