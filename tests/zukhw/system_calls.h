#pragma once

#include <optional>
#include <string>
#include <vector>

// A call to the system as strace prints it. Descriptors have what they stand for behind them:
// openat(3</>, "proc/stat", O_RDONLY|O_CLOEXEC) = 5</proc/stat>
struct SystemCall {
    std::string name;
    std::string arguments;
    std::string result;

    // What a successful call opened; empty for every other call.
    std::string opened() const;
    // The first text among the arguments; empty when there is none.
    std::string text() const;
    bool has(const std::string& argument) const { return arguments.find(argument) != std::string::npos; }
};

// What the built scanner asks of the system from its first own call on. No value when strace is not installed
// or may not trace, or where the calls are not those of the scanner alone.
std::optional<std::vector<SystemCall>> traceScanner(const std::vector<std::string>& arguments);

#define SKIP_WITHOUT_TRACE(trace) \
    if (!(trace)) GTEST_SKIP() << "strace cannot show the scanner's calls here"
