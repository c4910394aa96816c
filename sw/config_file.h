#pragma once

#include <zuk.h>

#include <cstdio>
#include <string>

// Writes a new configuration file with the context's options and gives its path. Names and values are
// written unescaped. 0 (also when the file could not be opened: the scanner run reports that), 3 for a
// null context, 201 when no name could be had or a write failed; a partial file stays.
int SW_CreateConfigFile(ZUKSwCtx* ctx, std::wstring& path);

// Writes the whole text; true when every byte was taken, false also for a null text. Wide text is
// narrowed to the low byte of each character, and ends where such a byte is zero.
bool SW_writeData(ZUKSwCtx* ctx, FILE* stream, const char* text);
bool SW_writeData(ZUKSwCtx* ctx, FILE* stream, const wchar_t* text);
