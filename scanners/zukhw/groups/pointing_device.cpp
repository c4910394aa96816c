// Group "PointingDevice": one instance per mouse, touchpad and the like, by the kernel's numbers; where the
// kernel has none, what the firmware says of the built-in ones.
#include <linux/input-event-codes.h>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/input_devices.h"
#include "scanners/zukhw/input_fields.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/smbios.h"

namespace {

const char* firmwareKind(unsigned code) {
    static constexpr const char* kNames[] = {
        "",           "Other",      "",         "Mouse",       "TrackBall",
        "TrackPoint", "GlidePoint", "Touchpad", "Touchscreen", "OpticalSensor"};
    return code < std::size(kNames) ? kNames[code] : "";
}

const char* firmwareInterface(unsigned code) {
    static constexpr const char* kNames[] = {"",         "Other",  "",          "Serial", "PS/2",
                                             "Infrared", "HP-HIL", "Bus mouse", "ADB"};
    static constexpr const char* kLater[] = {"Bus mouse DB-9", "Bus mouse micro-DIN", "USB", "I2C", "SPI"};
    constexpr unsigned kFirstLater = 0xA0;
    if (code < std::size(kNames)) return kNames[code];
    return code >= kFirstLater && code - kFirstLater < std::size(kLater) ? kLater[code - kFirstLater] : "";
}

void writeFirmwares(Machine& machine, GroupWriter& out) {
    for (const SmbiosStructure* device : machine.shared<Smbios>().ofType(21)) {
        out.beginInstance();
        out.text("Kind", firmwareKind(device->byte(0x04).value_or(0)));
        out.text("Interface", firmwareInterface(device->byte(0x05).value_or(0)));
        const auto buttons = device->byte(0x06);
        if (buttons != 0U) out.number("Buttons", buttons);
    }
}

}  // namespace

void collectPointingDevice(Machine& machine, GroupWriter& out) {
    bool any = false;
    for (const InputDevice& device : machine.shared<InputDevices>().all()) {
        if (device.pointing.empty()) continue;
        any = true;
        out.beginInstance();
        writeInputDevice(machine, device, out);
        out.text("Kind", device.pointing);
        out.number("Buttons", device.keys.count(BTN_LEFT, BTN_TASK));
        out.boolean("HasWheel", device.relativeAxes.has(REL_WHEEL));
    }
    if (!any) writeFirmwares(machine, out);
}
