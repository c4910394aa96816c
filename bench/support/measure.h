#pragma once

#include <functional>
#include <string>
#include <vector>

// How long something takes, in seconds.
double secondsOf(const std::function<void()>& work);

double median(std::vector<double> values);

// A child process that ran to its end.
struct ChildRun {
    double seconds;
    double peakBytes;  // the most memory it held
};

// Runs this program again with `arguments` and waits for it; throws when it fails.
ChildRun runSelf(const std::vector<std::string>& arguments);
