#pragma once

#include <map>
#include <string>

class Machine;

// What the distribution says of itself, under the names of os-release(5) ("NAME", "VERSION_ID"), whichever of
// the release files of this age or that it comes from.
std::map<std::string, std::string> readReleaseFiles(Machine& machine);
