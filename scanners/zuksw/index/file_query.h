#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scanners/zuksw/index/name_index.h"
#include "scanners/zuksw/index/text_numbers.h"
#include "scanners/zuksw/language/path_glob.h"
#include "scanners/zuksw/language/pattern.h"

namespace zuksw {

/** Types of directory entries, as a set. */
enum EntryType : unsigned { kRegular = 1, kDirectory = 2, kSymlink = 4 };

/** A file that a query selected by what its directory says about it. */
struct Candidate {
    std::uint32_t query;  // its number
    std::string path;
    bool operator<(const Candidate& other) const {
        return query != other.query ? query < other.query : path < other.path;
    }
};

/** Where a wanted file may stand, and of which type it may be. */
struct FilePlace {
    std::optional<Glob> path;  // for the path without its first '/'
    std::string under;         // only below this directory, "" for everywhere
    unsigned types = kRegular;

    /** Whether it is what stands at `path`. */
    bool acceptsPath(std::string_view path) const;
    /** Whether it may be something below the directory. */
    bool reachesBelow(std::string_view directory) const;
    /** Directories outside of which there is nothing for it: "/opt/x". */
    std::vector<std::string> areas() const;
};

/** What a search of the directories shall find. */
struct FileQuery : FilePlace {
    std::string key;                         // equal queries have equal keys
    std::vector<NameGlob> names;             // alternatives for the last component; empty: `pattern`
    std::shared_ptr<const Pattern> pattern;  // for the whole last component
};

/** All queries of a scan; equal ones are one. */
class QuerySet {
  public:
    /** Returns the number of the query: 0 for the first, one more for each that is new. Call before build().
     */
    std::uint32_t add(FileQuery query);
    void build(std::int64_t memory);

    bool empty() const { return placeOf_.empty(); }
    /** The number of a query that was added; nothing for any other. */
    std::optional<std::uint32_t> find(const FileQuery& query) const { return numbers_.find(query.key); }
    /** The places of all queries, each query's by its number. Many queries have the same. */
    const std::vector<FilePlace>& places() const { return places_; }
    std::uint32_t placeOf(std::uint32_t number) const { return placeOf_[number]; }
    /** Entry types that some query wants. */
    unsigned types() const { return types_; }
    /** Appends the numbers of the queries that want an entry, each once. Any thread may ask. */
    void find(std::string_view directory, std::string_view name, EntryType type,
              std::vector<std::uint32_t>* numbers) const;
    /** Directories that the search must go through, none inside another. */
    std::vector<std::string> areas() const;

  private:
    std::uint32_t addPlace(FilePlace place);

    TextNumbers numbers_;                                              // of keys
    std::vector<std::uint32_t> placeOf_;                               // by number, in places_
    std::vector<FilePlace> places_;                                    // may be far fewer
    std::map<std::pair<unsigned, std::string>, std::uint32_t> plain_;  // those without `path`: types, under
    NameIndex index_;
    unsigned types_ = 0;
};

/** Sorts directories and leaves out those inside others. */
std::vector<std::string> outermost(std::vector<std::string> directories);

}  // namespace zuksw
