#pragma once

#include <functional>
#include <string>
#include <vector>

// How much processor time something takes on this thread, in seconds: what else runs on the machine does
// not count.
double secondsOf(const std::function<void()>& work);

double median(std::vector<double> values);

// A child process that ran to its end.
struct ChildRun {
    double seconds;    // of processor time
    double peakBytes;  // the most memory it held, as it reported itself
};

// Runs this program again with `arguments` and waits for it; throws when it fails. The child calls
// reportPeak() before it ends.
ChildRun runSelf(const std::vector<std::string>& arguments);

// Tells runSelf() the most memory that this process held since it was started. (The figure that waiting
// for a child gives counts its parent's memory as well.)
void reportPeak();
