#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace zuksw {

/** The time that a scan may take, and a stop from outside. Any thread may ask. */
class Budget {
  public:
    /** seconds: from now on; 0 is without end. stop: spends it at once when set, by a signal handler, say. */
    Budget(std::uint64_t seconds, const std::atomic<bool>& stop)
        : endless_(seconds == 0),
          end_(std::chrono::steady_clock::now() + std::chrono::seconds(seconds)),
          stop_(stop) {}

    bool isSpent() const {
        if (late_.load(std::memory_order_relaxed) || stop_.load(std::memory_order_relaxed)) return true;
        if (endless_ || std::chrono::steady_clock::now() < end_) return false;
        late_.store(true, std::memory_order_relaxed);
        return true;
    }

  private:
    bool endless_;
    std::chrono::steady_clock::time_point end_;
    const std::atomic<bool>& stop_;
    mutable std::atomic<bool> late_{false};
};

}  // namespace zuksw
