#pragma once

#include <memory>
#include <string>

#include "platform/runtime.h"

// Everything up to the stream's end.
std::string readAll(Stream& stream);

// Starts the command with PATH as its whole environment; null when it could not be started.
std::unique_ptr<Process> start(const std::string& command);

// What the command, started by `start` and run to its end, wrote to its standard output; throws when it
// could not be started.
std::string outputOf(const std::string& command);

// Its exit status; -1 when it could not be started.
int statusOf(const std::string& command);
