#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

// A way to read a scanner file, compared with the bare parse of the same bytes.
struct Reading {
    const char* name;  // also selects it on a child's command line
    std::function<void(const std::string& path, std::size_t bytes)> writeFile;
    // Returns whatever holds the results.
    std::function<std::shared_ptr<void>(const std::string& path)> read;
};

// The body of a program that measures readings. Prints one line each, medians of paired rounds: the time
// of the bare parse, then as ratios to it the call and a whole process that ends while it holds the
// results, the most memory that process held per byte of input, and, again as a ratio, the release of the
// results. Arguments: [rounds [megabytes]], by default 11 and 20.
int runReadingBench(int argc, char** argv, const std::vector<Reading>& readings);
