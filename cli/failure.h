#pragma once

#include <stdexcept>
#include <string>

constexpr int kScanFailed = 1;
constexpr int kWrongUsage = 2;

// Why the program cannot go on, in words for its user, and the exit status that says so.
struct Failure : std::runtime_error {
    Failure(int status, const std::string& message) : std::runtime_error(message), exitStatus(status) {}

    int exitStatus;
};
