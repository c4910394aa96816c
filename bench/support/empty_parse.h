#pragma once

#include <string>

// The floor that every reader of XML stands on: expat with handlers that do nothing, the file read in
// blocks of 64 KiB straight into its buffer.
void parseWithEmptyHandlers(const std::string& path);
