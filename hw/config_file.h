#pragma once

#include <zuk.h>

#include <cstdio>

// Writes the configuration file that names the enabled groups. 0, or 102 when it could not be written
// completely; a partial file stays.
int HW_generateHWConfigFile(ZUKHwCtx* ctx, const wchar_t* path);

// Writes the whole text; true when every byte was taken.
bool HW_writeData(ZUKHwCtx* ctx, FILE* stream, const char* text);
