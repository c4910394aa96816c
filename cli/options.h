#pragma once

#include <optional>
#include <string>
#include <vector>

// What stands behind the name of a subcommand on the command line.
struct Options {
    bool help = false;
    bool json = false;
    bool verbose = false;
    std::optional<std::string> home;
    std::optional<std::string> catalogue;
    std::vector<std::string> presets;         // each NAME=VALUE[@GUID]
    std::vector<std::string> pluginSettings;  // each PLUGIN.ATTRIBUTE=VALUE
    std::vector<std::string> operands;
};

// An option with a value, as "--name VALUE" or "--name=VALUE".
struct ValueOption {
    const char* name;
    const char* value;  // what it wants, for messages
    void (*take)(const std::string& value, Options& options);
};

// Options may stand before and after operands; "--" ends them. All subcommands share the flags and --home;
// `own` are the others that this one has. Throws Failure for an unknown one.
Options parseOptions(const std::vector<std::string>& arguments, const std::vector<ValueOption>& own);
