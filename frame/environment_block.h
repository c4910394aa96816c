#pragma once

#include <string>

// The environment of a scanner: this process's own, in its order, with the home directory put in front
// of each LD_LIBRARY_PATH, or with LD_LIBRARY_PATH added at the end when there is none. As a block of
// NUL-terminated name=value entries that ends in an empty one, which is what Runtime::execute() takes.
// Another thread must not change the environment meanwhile.
std::string buildEnvironment(const std::wstring& homeDir);
