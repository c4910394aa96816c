#pragma once

#include <string>
#include <utility>

#include "cli/options.h"

// What a subcommand has to say, in UTF-8.
struct Answer {
    Answer(std::string text) : out(std::move(text)) {}

    std::string out;
    std::string remarks;  // for standard error, below it
};

// One word that may follow "zuk" on the command line.
struct Subcommand {
    const char* name;
    const char* summary;            // one line for the list of commands
    const char* help;               // what --help prints
    Answer (*run)(const Options&);  // throws Failure
};

extern const Subcommand kGroupsCommand;
extern const Subcommand kHwCommand;
