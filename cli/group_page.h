#pragma once

#include <string>
#include <vector>

#include "cli/inventory.h"
#include "cli/page.h"

// The groups as text for people. A group with one instance is a list; of several, each is a row, and
// fields on which all agree are named once. A page that clips gets the columns that it has room for, the
// others by their names. Groups without instances are named at the end.
std::wstring inventoryAsText(const std::vector<Group>& groups, const Page& page);

// The groups' numbers and names.
std::wstring groupListAsText(const std::vector<Group>& groups, const Page& page);
