#pragma once

#include <string>
#include <vector>

#include "cli/inventory.h"

// Those of `groups` that the words name, in the words' order, each once; all of them without words. A
// word is a group's name, in any case, or its number. Throws Failure, naming what is close, for any other.
std::vector<Group> chooseGroups(const std::vector<Group>& groups, const std::vector<std::string>& words);
