#pragma once

#include <string>
#include <vector>

// How a run of the built zukhw ended.
struct ScannerRun {
    int status;          // exit status, or -1 when it was killed
    std::string output;  // standard output
    std::string errors;  // standard error
};

// Starts the built program with these arguments and waits for its end.
ScannerRun runScanner(const std::vector<std::string>& arguments);

// A configuration file's text for these groups, by their configuration names.
std::string configFor(const std::vector<std::string>& groups);
