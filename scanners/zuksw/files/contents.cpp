#include "scanners/zuksw/files/contents.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace zuksw {
namespace {

constexpr std::uint64_t kMargin = std::uint64_t{64} * 1024;  // a match may begin or end in zeros
constexpr std::uint64_t kLarge = std::uint64_t{64} * 1024;   // worth the call that releases it

std::uint64_t pageSize() {
    static const auto kSize = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    return kSize;
}

}  // namespace

std::shared_ptr<Contents> Contents::ofMemory(std::string bytes) {
    std::shared_ptr<Contents> contents(new Contents);
    contents->memory_ = std::move(bytes);
    contents->bytes_ = contents->memory_;
    return contents;
}

std::shared_ptr<Contents> Contents::ofFile(FileDescriptor fd, std::uint64_t size) {
    std::shared_ptr<Contents> contents(new Contents);
    contents->fd_ = std::move(fd);
    if (size == 0) return contents;
    if (size > SIZE_MAX / 2) return nullptr;
    void* map = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_NORESERVE, contents->fd_.get(), 0);
    if (map == MAP_FAILED) return nullptr;
    contents->map_ = map;
    contents->bytes_ = {static_cast<const char*>(map), size};
    contents->guard_.emplace(map, size);
    return contents->guard_->stands() ? contents : nullptr;
}

// Pages that are still mapped would stay.
Contents::~Contents() {
    guard_.reset();
    if (map_ != nullptr) ::munmap(map_, bytes_.size());
    for (const Range& range : brought_) {
        ::posix_fadvise(fd_.get(), static_cast<off_t>(range.begin),
                        static_cast<off_t>(range.end - range.begin), POSIX_FADV_DONTNEED);
    }
}

std::vector<Range> Contents::stored(Range range) const {
    range.end = std::min<std::uint64_t>(range.end, size());
    if (range.begin >= range.end) return {};
    if (map_ == nullptr) return {range};
    std::vector<Range> ranges;
    for (std::uint64_t at = range.begin; at < range.end;) {
        const off_t data = ::lseek(fd_.get(), static_cast<off_t>(at), SEEK_DATA);
        if (data < 0 && errno == ENXIO) break;  // nothing but a hole
        if (data < 0) return {range};           // the file system cannot tell
        const off_t hole = ::lseek(fd_.get(), data, SEEK_HOLE);
        const std::uint64_t end = hole < 0 ? range.end : static_cast<std::uint64_t>(hole);
        const auto begin = static_cast<std::uint64_t>(data);
        if (begin >= range.end) break;
        const Range part = {begin > range.begin + kMargin ? begin - kMargin : range.begin,
                            std::min(end + kMargin, range.end)};
        if (!ranges.empty() && ranges.back().end >= part.begin) {
            ranges.back().end = part.end;
        } else {
            ranges.push_back(part);
        }
        at = std::max(end, at + 1);
    }
    return ranges;
}

// A range of which something is in memory already belongs to somebody.
bool Contents::isResident(Range pages) const {
    std::vector<unsigned char> resident((pages.end - pages.begin + pageSize() - 1) / pageSize());
    if (::mincore(at(pages.begin), pages.end - pages.begin, resident.data()) != 0) return true;
    return std::any_of(resident.begin(), resident.end(), [](unsigned char page) { return (page & 1U) != 0; });
}

Contents::Reading::Reading(const Contents& contents, Range range) : contents_(contents) {
    if (contents_.map_ == nullptr || range.begin >= range.end) return;
    pages_ = {range.begin / pageSize() * pageSize(), range.end};
    if (contents_.isResident(pages_)) return;
    ::madvise(contents_.at(pages_.begin), pages_.end - pages_.begin, MADV_SEQUENTIAL);
    const std::lock_guard<std::mutex> lock(contents_.mutex_);
    contents_.brought_.push_back(pages_);
}

Contents::Reading::~Reading() {
    if (pages_.end - pages_.begin < kLarge) return;
    ::madvise(contents_.at(pages_.begin), pages_.end - pages_.begin, MADV_DONTNEED);
}

}  // namespace zuksw
