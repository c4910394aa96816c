#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "scanners/zuksw/evaluation/cause.h"

namespace zuksw {

/** A part of the search domain that could not be searched. */
struct Gap {
    std::string directory;  // with everything below it; "" for everywhere
    Causes causes;
};

/** The gaps of a search. Any thread may add; read them when the search is over. */
class Gaps {
  public:
    void add(std::string_view directory, Cause cause);
    const std::vector<Gap>& all() const { return gaps_; }

  private:
    std::mutex mutex_;
    std::vector<Gap> gaps_;
};

}  // namespace zuksw
