#include "scanners/zukhw/volume_facts.h"

#include <algorithm>

#include "scanners/zukhw/block_devices.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/mountinfo.h"
#include "scanners/zukhw/swaps.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/udev_database.h"

namespace {

// File systems over several devices, as btrfs, are mounted under a number that is no block device's.
bool isOf(Machine& machine, const Mount& mount, const std::string& name, const std::string& number) {
    if (mount.device == number) return true;
    return startsWith(mount.device, "0:") && startsWith(mount.source, "/dev/") &&
           blockNameOfNode(machine, mount.source) == name;
}

}  // namespace

VolumeFacts::VolumeFacts(Machine& machine, const std::string& name, const std::string& path)
    : isSwap(machine.shared<Swaps>().contains(name)) {
    const std::string number = machine.text(path + "/dev");
    UdevDatabase& udev = machine.shared<UdevDatabase>();
    udevName = 'b' + number;
    fileSystem = udev.property(udevName, "ID_FS_TYPE");
    label = decodeUdevEscapes(udev.property(udevName, "ID_FS_LABEL_ENC"));
    uuid = udev.property(udevName, "ID_FS_UUID");
    if (number.empty()) return;
    for (const Mount& mount : machine.shared<Mountinfo>().mounts()) {
        if (!isOf(machine, mount, name, number)) continue;
        if (fileSystem.empty()) fileSystem = mount.type;
        const bool known =
            std::find(mountPoints.begin(), mountPoints.end(), mount.point) != mountPoints.end();
        if (!known) mountPoints.push_back(mount.point);
    }
}
