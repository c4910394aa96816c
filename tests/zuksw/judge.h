#pragma once

#include <string>
#include <vector>

// Other programs that know the answer, asked by the tests where they are installed.

// True when PATH has a program of that name.
bool isInstalled(const std::string& program);

struct Verdict {
    int status = -1;     // exit status; -1 when the program could not be run or was killed
    std::string output;  // its standard output; what it says on standard error is dropped
};

// Runs argv[0], looked up in PATH, to its end.
Verdict ask(const std::vector<std::string>& argv);

// How many cases to generate for a judge: `usual`, times the environment's ZUK_JUDGE_FACTOR where it is set.
int judgedCases(int usual);
