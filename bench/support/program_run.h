#pragma once

#include <optional>
#include <string>
#include <vector>

// What a program took from its start to its end, the children that it waited for included.
struct ProgramRun {
    double seconds;      // of processor time
    double wallSeconds;  // of the clock on the wall
    double peakBytes;    // the most memory that it or one child held; never less than the bench itself holds
};

// Runs a program with its output thrown away; no value when it is not installed. It must succeed, unless
// `mayFail`: some tools call it a failure when a file has gone meanwhile.
std::optional<ProgramRun> runProgram(const std::vector<std::string>& words, bool mayFail = false);
