#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** Turns byte offsets of a text into lines and columns, both counted from 1. The text must outlive it. */
class LineIndex {
  public:
    explicit LineIndex(std::string_view text) : text_(text) {}

    /** "line 3, column 7". The index is built at the first question. */
    std::string describe(std::size_t offset);
    /** "3:7" */
    std::string brief(std::size_t offset);

  private:
    std::pair<std::size_t, std::size_t> locate(std::size_t offset);

    std::string_view text_;
    std::vector<std::size_t> starts_;  // offset at which each line begins
};

}  // namespace zuksw
