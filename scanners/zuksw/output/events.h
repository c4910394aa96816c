#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <tuple>

namespace zuksw {

enum class EventCode {
    kEncoding,
    kConfigUnknown,
    kConfigValue,
    kPresetUnused,
    kSignatureInvalid,
    kUnknownElement,
    kDuplicateGuid,
    kCycle,
    kUnknownGuid,
    kLanguage,
    kStrayText,
    kUnreadable,
    kNotSearched,
    kTooLarge,
    kBadFormat,
    kChanged,
    kDenied,
    kAmbiguous,
    kBadArchive,
    kArchiveLimit,
    kPackageDb,
    kVersionSyntax,
    kRowsLimit,
    kResultsLimit,
    kTimeBudget,
    kUndecided,
    kSandboxOff,
    kMoreEvents,
};

/** What the scan has to say besides its results. Events of the same code, signature and text are one, with a
 *  count and the first path in byte order, and where there are too many the first in order stay, so that what
 *  is written does not depend on the order of the scan. Any thread may add. */
class Events {
  public:
    explicit Events(std::size_t limit) : limit_(limit) {}

    /** guid and path may be empty. */
    void add(EventCode code, std::string_view guid, std::string_view text, std::string_view path = {});
    /** Sets how many different events are kept, those that sum up the scan not counted. */
    void setLimit(std::size_t limit);

    /** The complete warning file. */
    std::string toXml() const;

  private:
    struct Group {
        std::uint64_t count = 0;
        std::string path;
    };
    using Key = std::tuple<EventCode, std::string, std::string>;  // code, guid, text
    std::size_t countedGroups() const;
    void dropLast();

    mutable std::mutex mutex_;
    std::map<Key, Group> groups_;
    std::size_t limit_;
    std::size_t summaries_ = 0;  // of the groups
    std::uint64_t dropped_ = 0;
};

}  // namespace zuksw
