#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// What became of the files that the collectors asked for; ScanInfo tells it.
class SourceLog {
  public:
    static constexpr std::size_t kMaxDenied = 50;
    static constexpr std::size_t kMaxMalformed = 20;

    void missing() { ++missing_; }
    void denied(std::string_view path) {
        denied_.emplace(path);
        ++denials_;
    }
    // What was denied when it was read for one group is now missed by another.
    void deniedAgain() { ++denials_; }
    // An item of a source that breaks the source's own rules and was skipped; offset in bytes from its start.
    void malformed(std::string_view source, std::size_t offset);

    std::size_t missingCount() const { return missing_; }
    std::size_t deniedCount() const { return denied_.size(); }
    // How often somebody was denied something, the same thing or not.
    std::size_t denials() const { return denials_; }
    std::size_t malformedCount() const { return malformed_; }
    // The first kMaxDenied paths by name, with a leading slash.
    std::vector<std::string> deniedPaths() const;
    // The first kMaxMalformed items as they came: "/path@offset".
    const std::vector<std::string>& malformedItems() const { return items_; }

  private:
    std::size_t missing_ = 0;
    std::size_t denials_ = 0;
    std::size_t malformed_ = 0;
    std::set<std::string, std::less<>> denied_;
    std::vector<std::string> items_;
};
