#pragma once

#include "scanners/zukhw/unit_states.h"

class GroupWriter;
class Machine;

// Writes an instance for each system service of the machine's files, with the state that the service manager
// told of it.
void writeServices(Machine& machine, const UnitStates& states, GroupWriter& out);
