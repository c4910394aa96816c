#pragma once

#include <string>

// One kind of hardware information. The names are constants and never released.
struct HWGroup {
    int id;
    const char* configName;    // written into the scanner's configuration file
    const wchar_t* groupName;  // the scanner's element name, and what callers are given
};

constexpr int HW_GROUP_SLOTS = 52;  // option slots 0 to 51; slot 0 is no group

// The groups in ascending order of id, ended by a row with the id HW_GROUP_SLOTS and no names. Some ids
// name no group (17, 18, 33) and have no row.
extern const HWGroup HW_GROUPS[];

// True for 1 to 51, also for the ids that name no group.
constexpr bool HW_isGroupId(int id) {
    return 0 < id && id < HW_GROUP_SLOTS;
}

// The id of the group whose group name is exactly `name`, or -1.
int HW_getGroupId(std::wstring name);
