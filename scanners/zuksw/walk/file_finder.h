#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "scanners/zuksw/files/file_object.h"
#include "scanners/zuksw/index/file_query.h"
#include "scanners/zuksw/walk/listings.h"
#include "scanners/zuksw/walk/walker.h"

namespace zuksw {

/** The files that a query selects, and why some may be missing. */
struct FoundFiles {
    std::vector<std::shared_ptr<const DiskFile>> files;  // in byte order of the path they were found by
    Causes causes = 0;
};

/** Finds the files that conditions ask for. Queries that need a walk are known before it; their answers are
 * remembered, since many conditions may ask the same. Any thread may ask. */
class FileFinder {
  public:
    explicit FileFinder(const Walker::Places& places) : places_(places) {}

    /** Walks for the queries, when there are any. */
    void walk(QuerySet queries, unsigned threads, std::int64_t memory);

    /** The answer to one of the queries; no files for another. */
    const FoundFiles& walked(const FileQuery& query);
    /** Whether there surely is no file for the query of that number. */
    bool foundNothing(std::uint32_t number);
    /** The answer to a query that no walk is needed for: one alternative of a glob, by listing directories.
     *  query.path is taken below `base`, "" for the root. */
    FoundFiles listed(const FileQuery& query, const std::string& base) const;

    std::uint64_t entries() const { return entries_; }

  private:
    struct Answer {
        std::once_flag once;
        std::vector<std::string> candidates;
        FoundFiles found;
    };
    const FoundFiles& answerTo(std::uint32_t number);
    void add(const std::string& path, unsigned types, FoundFiles* found) const;
    Causes countedGaps() const;
    Causes gapsOf(const FilePlace& place) const;

    Walker::Places places_;
    QuerySet queries_;
    std::unordered_map<std::uint32_t, Answer> answers_;  // by number; of queries that have candidates
    std::vector<Answer> nothing_;                        // by place; of all others
    mutable Listings listings_;
    std::uint64_t entries_ = 0;
};

}  // namespace zuksw
