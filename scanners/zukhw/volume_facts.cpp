#include "scanners/zukhw/volume_facts.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/mountinfo.h"
#include "scanners/zukhw/swaps.h"
#include "scanners/zukhw/udev_database.h"

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
        if (mount.device != number) continue;
        if (fileSystem.empty()) fileSystem = mount.type;
        const bool known =
            std::find(mountPoints.begin(), mountPoints.end(), mount.point) != mountPoints.end();
        if (!known) mountPoints.push_back(mount.point);
    }
}
