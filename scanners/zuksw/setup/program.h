#pragma once

#include <string>
#include <vector>

namespace zuksw {

/** The whole program: takes the words behind its name, returns its exit status. */
int runProgram(const std::vector<std::string>& words);

}  // namespace zuksw
