#pragma once

#include <cstdint>
#include <string>

// The least work that can find every name below a directory: threads that do nothing but getdents64 in large
// blocks, and ask nothing about an entry that its directory does not say. Mount points are not entered.
// Returns the number of entries.
std::uint64_t walkDirectories(const std::string& root, unsigned threads);
