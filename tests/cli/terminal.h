#pragma once

#include <string>

// What a command line of the shell writes, on both its streams, to a terminal that is `columns` wide.
std::string onTerminal(const std::string& command, unsigned short columns);
