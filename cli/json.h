#pragma once

#include <string>
#include <vector>

#include "cli/inventory.h"

// The groups as one JSON object in UTF-8: a member a group, an array of its instances, an object each.
std::string inventoryAsJson(const std::vector<Group>& groups);

// The groups' numbers and names as a JSON array.
std::string groupListAsJson(const std::vector<Group>& groups);
