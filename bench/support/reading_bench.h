#pragma once

#include <functional>
#include <string>
#include <vector>

// A way to read a scanner file, compared with the bare parse of the same bytes.
struct Reading {
    const char* name;  // also selects it on a child's command line
    std::function<void(const std::string& path, std::size_t bytes)> writeFile;
    std::function<void(const std::string& path)> read;
};

// The body of a program that measures readings: prints one line each with the ratio to the bare parse in
// the call and as a whole process, and the peak memory per byte of input, all medians of paired rounds.
// Arguments: [rounds [megabytes]], by default 11 and 20.
int runReadingBench(int argc, char** argv, const std::vector<Reading>& readings);
