#pragma once

#include <string>

class Machine;

// How a disk is attached: NVMe, SATA, SAS, SCSI, FibreChannel, iSCSI, USB, FireWire, Virtio, Xen, HyperV,
// MMC, SD, UFS, IDE, DASD or RAID; empty when that cannot be told. `path` is the disk's directory free of
// links.
std::string blockInterface(Machine& machine, const std::string& path);
