#pragma once

#include <set>
#include <string>
#include <vector>

// What a program did while it ran under strace.
struct TracedRun {
    std::set<std::string> filesRead;  // absolute, links resolved; no directories
    int childProcesses = 0;
};

// Throws when strace is not installed or the program fails.
TracedRun runTraced(const std::vector<std::string>& words);
