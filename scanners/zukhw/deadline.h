#pragma once

#include <chrono>
#include <exception>

// Leaves a collector that has used up its time. The collectors themselves neither throw nor catch it.
class GroupTimeout : public std::exception {
  public:
    const char* what() const noexcept override { return "the group's time is up"; }
};

// How long the group that is being collected may still take, and the scan as a whole.
class Deadline {
  public:
    using Clock = std::chrono::steady_clock;

    explicit Deadline(Clock::duration perScan) : scanEnd_(Clock::now() + perScan) {}

    void startGroup(Clock::duration perGroup) {
        const Clock::time_point end = Clock::now() + perGroup;
        groupEnd_ = end < scanEnd_ ? end : scanEnd_;
    }
    // From here on nothing is cut: the account of the scan is always finished.
    void lift() { groupEnd_ = Clock::time_point::max(); }

    void check() const {
        if (Clock::now() > groupEnd_) throw GroupTimeout();
    }

  private:
    Clock::time_point scanEnd_;
    Clock::time_point groupEnd_ = Clock::time_point::max();
};
