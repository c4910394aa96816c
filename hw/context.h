#pragma once

#include <zuk.h>

#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "hw/catalogue.h"

class ZUKlog;
class TemporaryDir;

using HWField = std::pair<std::wstring, std::wstring>;  // name, value
using HWInstance = std::list<HWField>;                  // as the scanner reported them, doubles included

// One hardware scan: what to look for, and what the last run found. Both maps hold an entry, possibly an
// empty one, for every slot.
struct ZUKHwCtx {
    ZUKCtx* library = nullptr;       // borrowed
    ZUKlog* log = nullptr;           // owned
    TemporaryDir* tmpDir = nullptr;  // owned
    std::wstring initFile;           // a name reserved at creation; nothing is written to it
    std::wstring homeDir;
    unsigned char enabled[HW_GROUP_SLOTS] = {};
    std::map<int, std::vector<HWInstance>> results;
    // For each instance the names of its fields, pointing into `results`; null for one without fields.
    std::map<int, std::vector<const wchar_t**>> fields;
    int returnCode = -1;  // of the last scanner run; -1 when there is none to rely on
};

// Gives both maps an empty entry for every slot, releasing what they held.
void HW_clearResults(ZUKHwCtx* ctx);
