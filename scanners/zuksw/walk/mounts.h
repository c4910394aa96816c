#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** One line of mountinfo. */
struct Mount {
    std::string device;   // "8:1"
    std::string subtree;  // which part of its file system is seen, "/" for all
    std::string point;    // where
    std::string type;
};

/** Reads the text of /proc/self/mountinfo; lines that do not parse are left out. */
std::vector<Mount> parseMounts(std::string_view mountinfo);

/** Whether `path` is `directory` or lies below it; both without '/' at the end, "" being the root. */
bool isAtOrBelow(std::string_view path, std::string_view directory);

}  // namespace zuksw
