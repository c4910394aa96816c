#pragma once

#include <map>
#include <string>
#include <string_view>

// The assignments of an os-release(5) file and of its look-alikes: shell variables with shell quoting. Lines
// that are none are skipped; of repeated names the last counts.
std::map<std::string, std::string> parseOsRelease(std::string_view text);
