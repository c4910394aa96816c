#pragma once

class GroupWriter;
class Machine;
struct InputDevice;

// Writes the fields that keyboards and pointing devices have in common.
void writeInputDevice(Machine& machine, const InputDevice& device, GroupWriter& out);
