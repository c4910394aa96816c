#pragma once

#include <zuk.h>

#include <string>

class ZUKlog;
class TemporaryDir;

// What ZUK_init makes and ZUK_free releases. Scan contexts borrow it: they read tmpDir for its path and
// copy homeDir.
struct ZUKCtx {
    char* exploiter = nullptr;       // strdup'ed
    ZUKlog* log = nullptr;           // owned
    TemporaryDir* tmpDir = nullptr;  // owned
    std::wstring homeDir;            // empty when no installation is known
};
