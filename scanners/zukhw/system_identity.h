#pragma once

#include <string>

class Machine;

// Which system this is, by the first source that tells: SMBIOS, the device tree, s390's /proc/sysinfo;
// machine.shared<SystemIdentity>(). Without placeholders; empty when unknown.
struct SystemIdentity {
    explicit SystemIdentity(Machine& machine);

    std::string manufacturer;
    std::string model;
    std::string serialNumber;
    std::string serialNumberSource;  // System, Chassis, Board, DeviceTree, SysInfo or Soc
    std::string uuid;
    std::string source;  // of manufacturer and model: SMBIOS, DeviceTree, SysInfo or None
};
