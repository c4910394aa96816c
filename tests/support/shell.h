#pragma once

#include <string>

struct ShellResult {
    int status;  // 128 + n when signal n ended the command
    std::string out;
    std::string err;
};

// Runs a command line of the shell to its end, with nothing on its standard input.
ShellResult shell(const std::string& command);

// The text as one word of a command line.
std::string quoted(const std::string& text);
