#pragma once

#include <map>
#include <string>

// The bytes of a hardware database (hwdb.bin) that holds these patterns with one property each.
std::string makeHwdb(const std::map<std::string, std::pair<std::string, std::string>>& patterns);
