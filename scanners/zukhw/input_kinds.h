#pragma once

#include <string>

#include "scanners/zukhw/input_bits.h"

// What an input device can do, as linux/input-event-codes.h numbers it.
struct InputAbilities {
    InputBits properties, events, keys, relativeAxes, absoluteAxes;
};

// "Mouse", "TrackPoint", "Touchpad", "Touchscreen", "Tablet" or "Joystick"; empty for what points at nothing.
std::string pointingKind(const InputAbilities& abilities);

// Whether one can write with it: it has the letters' rows and Enter.
bool isKeyboard(const InputAbilities& abilities);
