#pragma once

#include <optional>
#include <string>
#include <vector>

// What stands behind the name of a subcommand on the command line. All subcommands share the options.
struct Options {
    bool help = false;
    bool json = false;
    bool verbose = false;
    std::optional<std::string> home;
    std::vector<std::string> operands;
};

// Options may stand before and after operands; "--" ends them. Throws Failure for an unknown one.
Options parseOptions(const std::vector<std::string>& arguments);
