#pragma once

#include <optional>
#include <string>

namespace zuksw {

enum ExitStatus {
    kExitDone = 0,
    kExitInternal = 1,
    kExitUsage = 2,
    kExitSignatures = 3,
    kExitConfiguration = 4,
    kExitOutput = 5,
};

/** Prints "zuksw: LEVEL: text" as one line. */
void say(const char* level, const std::string& text);

/** The bytes of an input file of at most 64 MiB; nothing, and the reason in *error, when it cannot be read.
 */
std::optional<std::string> readInput(const std::string& path, std::string* error);

}  // namespace zuksw
