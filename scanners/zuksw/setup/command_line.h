#pragma once

#include <string>
#include <vector>

namespace zuksw {

/** What the program is asked to do. */
struct CommandLine {
    bool help = false;
    bool version = false;
    bool check = false;
    std::string configuration;
    std::string output;
    std::string warnings;
    std::string signatures;
};

/** Reads the words behind the program's name. Returns an empty string, or what is wrong with them. */
std::string readCommandLine(const std::vector<std::string>& words, CommandLine* commandLine);

extern const char kUsage[];

}  // namespace zuksw
