#pragma once

#include <string>

#include "cli/options.h"

// One word that may follow "zuk" on the command line.
struct Subcommand {
    const char* name;
    const char* summary;                 // one line for the list of commands
    const char* help;                    // what --help prints
    std::string (*run)(const Options&);  // gives what to print, in UTF-8; throws Failure
};

extern const Subcommand kGroupsCommand;
extern const Subcommand kHwCommand;
