#pragma once

#include <string>

class ZUKlog;

constexpr int kScannerNotStarted = -1;

// Runs a scanner to its end, with LD_LIBRARY_PATH extended by `homeDir`, and logs its standard output and
// how it ended under `location`. `log` may be null. Returns its exit status, with its result value in
// `returnCode`; or kScannerNotStarted, with -1 there.
int runScanner(const std::wstring& command, const std::wstring& homeDir, ZUKlog* log, const char* location,
               int& returnCode);
