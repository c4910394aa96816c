#pragma once

#include <string>
#include <vector>

#include "cli/software.h"

// One JSON object in UTF-8: an array of what was found, and one of the warnings.
std::string softwareAsJson(const std::vector<Software>& found, const std::vector<Warning>& warnings);
