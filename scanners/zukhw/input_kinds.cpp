#include "scanners/zukhw/input_kinds.h"

#include <linux/input-event-codes.h>

namespace {

std::string absoluteKind(const InputAbilities& abilities) {
    const InputBits& keys = abilities.keys;
    const bool direct = abilities.properties.has(INPUT_PROP_DIRECT);
    if (keys.has(BTN_STYLUS)) return "Tablet";
    if (keys.has(BTN_TOOL_FINGER) && !direct) return "Touchpad";
    if (direct || keys.has(BTN_TOUCH)) return "Touchscreen";
    if (keys.has(BTN_TRIGGER) || keys.has(BTN_SOUTH)) return "Joystick";
    // Virtual machines have mice that tell places, so that the pointers inside and outside agree.
    return keys.has(BTN_LEFT) ? "Mouse" : "";
}

}  // namespace

std::string pointingKind(const InputAbilities& abilities) {
    const bool relative = abilities.events.has(EV_REL) && abilities.relativeAxes.hasAll(REL_X, REL_Y);
    if (relative && abilities.keys.has(BTN_LEFT)) {
        return abilities.properties.has(INPUT_PROP_POINTING_STICK) ? "TrackPoint" : "Mouse";
    }
    const bool absolute = abilities.events.has(EV_ABS) && abilities.absoluteAxes.hasAll(ABS_X, ABS_Y);
    return absolute ? absoluteKind(abilities) : "";
}

bool isKeyboard(const InputAbilities& abilities) {
    const InputBits& keys = abilities.keys;
    return abilities.events.has(EV_KEY) && keys.hasAll(KEY_Q, KEY_P) && keys.hasAll(KEY_A, KEY_L) &&
           keys.has(KEY_ENTER);
}
