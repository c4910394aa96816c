#pragma once

#include <map>
#include <vector>

// Releases every array of field names and leaves an empty entry for every slot.
void HW_cleanFields(std::map<int, std::vector<const wchar_t**>>& fields);
