#pragma once

#include <zuk.h>

#include <string>

// These wrap signature texts, as they are, in one new file and give its path. 0; 3 for a null context;
// 202 when the file could not be opened or written, a null text included; a partial file stays.
int SW_CreateSignature(ZUKSwCtx* ctx, std::wstring& path, const wchar_t* signature);
// A null array holds no signature.
int SW_CreateSignatures(ZUKSwCtx* ctx, std::wstring& path, const wchar_t** signatures, unsigned count);
