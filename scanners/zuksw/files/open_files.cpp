#include "scanners/zuksw/files/open_files.h"

namespace zuksw {
namespace {

constexpr std::size_t kKept = 64;

}  // namespace

std::shared_ptr<OpenFiles::Slot> OpenFiles::slotOf(const std::string& path) {
    std::shared_ptr<Slot> dropped;  // closed, if it is, when the lock is gone
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = places_.find(path);
    if (found != places_.end()) {
        entries_.splice(entries_.begin(), entries_, found->second);
        return entries_.front().second;
    }
    if (entries_.size() == kKept) {
        dropped = std::move(entries_.back().second);
        places_.erase(entries_.back().first);
        entries_.pop_back();
    }
    entries_.emplace_front(path, std::make_shared<Slot>());
    places_.emplace(path, entries_.begin());
    return entries_.front().second;
}

OpenFiles::File OpenFiles::get(const std::string& path, const std::function<File()>& open) {
    const std::shared_ptr<Slot> slot = slotOf(path);
    const std::lock_guard<std::mutex> lock(slot->mutex);
    if (!slot->file) slot->file = open();
    return slot->file;
}

}  // namespace zuksw
