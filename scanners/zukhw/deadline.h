#pragma once

#include <chrono>
#include <ctime>
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

    explicit Deadline(Clock::duration perScan) : scanEnd_(now() + perScan) {}

    void startGroup(Clock::duration perGroup) {
        const Clock::time_point end = now() + perGroup;
        groupEnd_ = end < scanEnd_ ? end : scanEnd_;
    }
    // From here on nothing is cut: the account of the scan is always finished.
    void lift() { groupEnd_ = Clock::time_point::max(); }

    void check() const {
        if (now() > groupEnd_) throw GroupTimeout();
    }

  private:
    // The same clock as of its last tick, a few milliseconds ago: asked before every file, the exact time
    // would cost as much as many a group.
    static Clock::time_point now() {
        timespec time{};
        clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
        return Clock::time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }

    Clock::time_point scanEnd_;
    Clock::time_point groupEnd_ = Clock::time_point::max();
};
