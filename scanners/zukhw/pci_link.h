#pragma once

#include <string>

class GroupWriter;
class Machine;

// Writes LinkSpeed, LinkWidth, MaxLinkSpeed and MaxLinkWidth of the PCI Express device in that directory.
void writePciLink(Machine& machine, const std::string& devicePath, GroupWriter& out);
