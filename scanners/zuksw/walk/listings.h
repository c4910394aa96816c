#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace zuksw {

/** What directories hold that were listed already: many conditions name the same few. Any thread may ask. */
class Listings {
  public:
    struct Entry {
        std::string name;
        unsigned char type;  // DT_REG and the like
    };
    using Listing = std::vector<Entry>;

    /** Longer ones are not kept. */
    static constexpr std::size_t kLongest = 16'384;

    /** Null when there is none. */
    std::shared_ptr<const Listing> find(const std::string& directory) const;
    void keep(const std::string& directory, Listing listing);

  private:
    mutable std::mutex mutex_;
    std::unordered_map<std::string, std::shared_ptr<const Listing>> listings_;
    std::size_t entries_ = 0;  // in all of them
};

}  // namespace zuksw
