#pragma once

#include <zuk.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "sw/result.h"

class ZUKlog;
class TemporaryDir;

// One software scan: its options, which last until the context is released, and the results of the last
// evaluation.
struct ZUKSwCtx {
    ZUKSwCtx();

    ZUKCtx* libCtx = nullptr;        // borrowed
    ZUKlog* log = nullptr;           // owned; may be null
    TemporaryDir* tmpDir = nullptr;  // owned
    std::wstring homeDir;
    int lastRc = -1;  // of the last scanner run; -1 when none has run since the last change
    std::map<std::wstring, std::pair<std::wstring, std::wstring>> presetVariables;  // name: value, GUID
    // Plug-in: attribute name and value in the order set, doubles included.
    std::map<std::wstring, std::vector<std::pair<std::wstring, std::wstring>>> pluginConfig;
    std::vector<ZUKSwResult*> results;                  // owned, in the order of the scanner's file
    std::map<std::wstring, ZUKSwResult**> guidResults;  // arrays of malloc, built on demand
    std::map<std::wstring, unsigned> guidResultCounts;
    std::vector<std::wstring> warnings;
    const wchar_t** warningArray = nullptr;  // of malloc, pointing into warnings; null when there are none
    ZUKSwResult** resultArray = nullptr;     // of malloc, a copy of results; null when there are none
};

// Forgets the results of the last evaluation; the options stay. Null is allowed.
void SW_deleteResults(ZUKSwCtx* ctx);
