#pragma once

#include <fstream>
#include <iterator>
#include <string>

// The whole content of a file; empty when it cannot be read.
inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
