#include "scanners/zuksw/walk/gaps.h"

namespace zuksw {
namespace {

// Beyond this the places are no longer told apart: a gap could be anywhere.
constexpr std::size_t kMaxGaps = 10'000;

}  // namespace

void Gaps::add(std::string_view directory, Cause cause) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (gaps_.size() < kMaxGaps && !directory.empty()) {
        gaps_.push_back({std::string(directory), toCauses(cause)});
        return;
    }
    if (gaps_.empty() || !gaps_.front().directory.empty()) gaps_.insert(gaps_.begin(), Gap{"", 0});
    gaps_.front().causes |= toCauses(cause);
}

}  // namespace zuksw
