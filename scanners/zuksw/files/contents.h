#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_descriptor.h"
#include "scanners/zuksw/files/fault_guard.h"

namespace zuksw {

struct Range {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/** The bytes of a file, mapped, or of an archive's member, in memory. Any thread may read them. */
class Contents {
  public:
    /** Null when the file cannot be mapped. */
    static std::shared_ptr<Contents> ofFile(FileDescriptor fd, std::uint64_t size);
    static std::shared_ptr<Contents> ofMemory(std::string bytes);
    ~Contents();
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;

    std::string_view bytes() const { return bytes_; }
    std::uint64_t size() const { return bytes_.size(); }
    /** True when the file was cut while it was read: what was read then is not what was in it. */
    bool changed() const { return guard_ && guard_->tripped(); }

    /** The parts of `range` that the file really stores, each with some of the zeros around it; the zeros of
     * a hole say nothing, and a hole can be as large as a disk is not. */
    std::vector<Range> stored(Range range) const;

    /** Stands while a range is read; afterwards a large one takes no memory of this process any more. What it
     *  brought into the machine's memory goes with the contents, so that a scan does not push out what the
     *  machine works with. */
    class Reading {
      public:
        Reading(const Contents& contents, Range range);
        ~Reading();
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

      private:
        const Contents& contents_;
        Range pages_;
    };

  private:
    Contents() = default;
    bool isResident(Range pages) const;
    char* at(std::uint64_t offset) const { return static_cast<char*>(map_) + offset; }

    FileDescriptor fd_;
    std::string memory_;
    std::string_view bytes_;
    void* map_ = nullptr;
    std::optional<FaultGuard> guard_;
    mutable std::mutex mutex_;
    mutable std::vector<Range> brought_;  // what was not in memory before it was read
};

}  // namespace zuksw
