#pragma once

#include <zuk.h>

#include <string>

// Runs the software scanner once and gives the paths of the two files it was told to write. 0; 3 for a
// null context; 202 when its exit status was 3; 203 when it was any other but 0 or it could not be
// started; else the status of the name that could not be had.
int SW_ExecuteScanner(ZUKSwCtx* ctx, std::wstring configPath, std::wstring signaturePath,
                      std::wstring& warningPath, std::wstring& outputPath);
