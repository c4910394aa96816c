#pragma once

#include <string_view>

// What a partition is for, by the type in its table's entry: a GUID in lower case (UEFI and the Discoverable
// Partitions Specification), or two hex digits of a master boot record ("83"). Empty when it is none of those
// in use.
std::string_view partitionTypeName(std::string_view type);
