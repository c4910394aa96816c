// Group "Keyboard": one instance per keyboard to write with, by the kernel's numbers.
#include <linux/input-event-codes.h>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/input_devices.h"
#include "scanners/zukhw/input_fields.h"
#include "scanners/zukhw/keyboard_config.h"
#include "scanners/zukhw/machine.h"

namespace {

unsigned functionKeys(const InputBits& keys) {
    return keys.count(KEY_F1, KEY_F10) + keys.count(KEY_F11, KEY_F12) + keys.count(KEY_F13, KEY_F24);
}

// The digits' three rows, which have other keys between them, and the zero.
bool hasNumericPad(const InputBits& keys) {
    return keys.hasAll(KEY_KP7, KEY_KP9) && keys.hasAll(KEY_KP4, KEY_KP6) && keys.hasAll(KEY_KP1, KEY_KP0);
}

}  // namespace

void collectKeyboard(Machine& machine, GroupWriter& out) {
    for (const InputDevice& device : machine.shared<InputDevices>().all()) {
        if (!device.keyboard) continue;
        const KeyboardConfig& config = machine.shared<KeyboardConfig>();
        out.beginInstance();
        writeInputDevice(machine, device, out);
        out.text("Layout", config.layout.empty() ? config.consoleKeymap : config.layout);
        out.text("Variant", config.variant);
        out.text("XkbModel", config.model);
        out.boolean("HasNumericPad", hasNumericPad(device.keys));
        out.number("FunctionKeys", functionKeys(device.keys));
        out.boolean("HasLeds", device.lights.count(LED_NUML, LED_MAX) != 0);
    }
}
