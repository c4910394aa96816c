#include "scanners/zuksw/evaluation/content_search.h"

#include <algorithm>

namespace zuksw {
namespace {

constexpr std::uint64_t kMaxWindow = std::uint64_t{4} << 20U;
constexpr std::uint64_t kMinWindow = std::uint64_t{64} * 1024;
constexpr std::uint64_t kWindowSteps = std::uint64_t{1} << 27U;
constexpr std::uint64_t kMaxMatch = std::uint64_t{64} * 1024;
constexpr int kMaxRetries = 16;

class Search {
  public:
    Search(std::string_view data, const re2::RE2& engine,
           const std::function<bool(const ContentMatch&)>& visit)
        : data_(data.data(), data.size()),
          engine_(engine),
          visit_(visit),
          brackets_(static_cast<std::size_t>(engine.NumberOfCapturingGroups()) + 1) {}

    /** Visits the matches that begin before `end`; they may reach up to `reach`. False: enough. */
    bool window(std::uint64_t begin, std::uint64_t end, std::uint64_t reach) {
        at_ = std::max(at_, begin);
        while (at_ <= end && find(reach, re2::RE2::UNANCHORED)) {
            if (matchBegin() >= end && end < data_.size()) return true;
            if (brackets_[0].size() > kMaxMatch && !shorten()) continue;
            const std::uint64_t offset = matchBegin();
            at_ = std::max(offset + brackets_[0].size(), offset + 1);
            retries_ = 0;
            if (!visit_({offset, brackets_})) return false;
        }
        return true;
    }

  private:
    std::uint64_t matchBegin() const {
        return static_cast<std::uint64_t>(brackets_[0].data() - data_.data());
    }

    bool find(std::uint64_t reach, re2::RE2::Anchor anchor) {
        return engine_.Match(data_, at_, reach, anchor, brackets_.data(), static_cast<int>(brackets_.size()));
    }

    // The same place may hold a shorter match. If not, the search goes on behind its beginning, and behind
    // all of the 64 KiB when that happens again and again: a pattern may match from every byte on.
    bool shorten() {
        const std::uint64_t begin = matchBegin();
        at_ = begin;
        if (find(std::min<std::uint64_t>(begin + kMaxMatch, data_.size()), re2::RE2::ANCHOR_START))
            return true;
        at_ = begin + (++retries_ > kMaxRetries ? kMaxMatch : 1);
        return false;
    }

    re2::StringPiece data_;
    const re2::RE2& engine_;
    const std::function<bool(const ContentMatch&)>& visit_;
    std::vector<re2::StringPiece> brackets_;
    std::uint64_t at_ = 0;
    int retries_ = 0;
};

// A search that keeps all of a pattern's possibilities in mind takes a step for each of them and each byte,
// so the longer the pattern, the sooner the clock is looked at.
std::uint64_t windowFor(const re2::RE2& engine) {
    const auto size = static_cast<std::uint64_t>(std::max(engine.ProgramSize(), 1));
    return std::clamp(kWindowSteps / size, kMinWindow, kMaxWindow);
}

}  // namespace

Causes searchContent(const Contents& contents, Range part, const re2::RE2& engine, Machine& machine,
                     const std::function<bool(const ContentMatch&)>& visit) {
    const std::string_view data = contents.bytes().substr(part.begin, part.end - part.begin);
    Search search(data, engine, visit);
    if (data.empty()) {
        search.window(0, 0, 0);
        return 0;
    }
    const std::uint64_t window = windowFor(engine);
    for (const Range& stored : contents.stored(part)) {
        const std::uint64_t last = stored.end - part.begin;
        for (std::uint64_t at = stored.begin - part.begin; at < last; at += window) {
            const std::uint64_t end = std::min(at + window, last);
            const std::uint64_t reach = std::min(end + kMaxMatch, last);
            const Causes refused = machine.takeBytes(end - at);
            if (refused != 0) return refused;
            const Contents::Reading reading(contents, {part.begin + at, part.begin + reach});
            const bool more = search.window(at, end, reach);
            if (contents.changed()) {
                machine.events.add(EventCode::kChanged, {}, "a file was cut while it was read");
                return toCauses(Cause::kChanged);
            }
            if (!more) return 0;
        }
    }
    return 0;
}

}  // namespace zuksw
