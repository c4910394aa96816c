#pragma once

#include <string>
#include <utility>
#include <vector>

#include "cli/options.h"

// What a subcommand has to say, in UTF-8.
struct Answer {
    Answer(std::string text, std::string remark = {}) : out(std::move(text)), remarks(std::move(remark)) {}

    std::string out;
    std::string remarks;  // for standard error, below it
};

// One word that may follow "zuk" on the command line.
struct Subcommand {
    const char* name;
    const char* summary;            // one line for the list of commands
    const char* help;               // what --help prints
    Answer (*run)(const Options&);  // throws Failure
    std::vector<ValueOption> valueOptions = {};
};

extern const Subcommand kGroupsCommand;
extern const Subcommand kHwCommand;
extern const Subcommand kSwCommand;
