#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace zuksw {

/** The time that a scan may take, and a stop from outside. Any thread may ask; a signal handler may stop. */
class Budget {
  public:
    /** seconds: from now on; 0 is without end. */
    explicit Budget(std::uint64_t seconds)
        : endless_(seconds == 0), end_(std::chrono::steady_clock::now() + std::chrono::seconds(seconds)) {}

    bool isSpent() const {
        if (stopped_.load(std::memory_order_relaxed)) return true;
        if (endless_ || std::chrono::steady_clock::now() < end_) return false;
        stopped_.store(true, std::memory_order_relaxed);
        return true;
    }
    void stop() { stopped_.store(true, std::memory_order_relaxed); }

  private:
    bool endless_;
    std::chrono::steady_clock::time_point end_;
    mutable std::atomic<bool> stopped_{false};
};

}  // namespace zuksw
