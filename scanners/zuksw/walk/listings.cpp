#include "scanners/zuksw/walk/listings.h"

#include <utility>

namespace zuksw {
namespace {

constexpr std::size_t kMostEntries = std::size_t{4} * Listings::kLongest;

}  // namespace

std::shared_ptr<const Listings::Listing> Listings::find(const std::string& directory) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = listings_.find(directory);
    return found == listings_.end() ? nullptr : found->second;
}

void Listings::keep(const std::string& directory, Listing listing) {
    const std::size_t size = listing.size() + 1;
    const std::lock_guard<std::mutex> lock(mutex_);
    if (entries_ + size > kMostEntries) {
        listings_.clear();
        entries_ = 0;
    }
    const auto kept = std::make_shared<const Listing>(std::move(listing));
    if (listings_.emplace(directory, kept).second) entries_ += size;
}

}  // namespace zuksw
