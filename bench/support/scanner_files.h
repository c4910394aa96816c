#pragma once

#include <cstddef>
#include <string>

// Files as the scanners write them, of `bytes` or a little more; the same at every call.
void writeHardwareFile(const std::string& path, std::size_t bytes);
void writeSoftwareFile(const std::string& path, std::size_t bytes);
// A warning file without events.
void writeWarningFile(const std::string& path);
