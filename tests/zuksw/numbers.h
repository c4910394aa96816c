#pragma once

#include <cstddef>
#include <cstdint>

// Numbers for generated cases: the same in every run and with every standard library.
class Numbers {
  public:
    // One of 0 to limit - 1, from a linear congruential generator.
    std::size_t below(std::size_t limit) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::size_t>(state_ >> 33U) % limit;
    }

  private:
    std::uint64_t state_ = 1;
};
