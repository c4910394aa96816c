#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "scanners/zuksw/index/name_index.h"
#include "scanners/zuksw/language/path_glob.h"
#include "scanners/zuksw/language/pattern.h"

namespace zuksw {

/** Types of directory entries, as a set. */
enum EntryType : unsigned { kRegular = 1, kDirectory = 2, kSymlink = 4 };

/** A file that a query selected by what its directory says about it. */
struct Candidate {
    std::string path;
    bool operator<(const Candidate& other) const { return path < other.path; }
};

/** What a search of the directories shall find. */
struct FileQuery {
    std::string key;                         // equal queries have equal keys
    std::vector<NameGlob> names;             // alternatives for the last component; empty: `pattern`
    std::shared_ptr<const Pattern> pattern;  // for the whole last component
    std::optional<Glob> path;                // for the path without its first '/'
    std::string under;                       // only below this directory, "" for everywhere
    unsigned types = kRegular;

    /** Whether the query wants what stands at `path`, given that its name fits. */
    bool acceptsPath(std::string_view path) const;
    /** Whether it may want something below the directory. */
    bool reachesBelow(std::string_view directory) const;
    /** Directories outside of which there is nothing for it: "/opt/x". */
    std::vector<std::string> areas() const;
};

/** All queries of a scan; equal ones are one. */
class QuerySet {
  public:
    /** Returns the number of the query. Call before build(). */
    std::uint32_t add(FileQuery query);
    void build(std::int64_t memory);

    bool empty() const { return queries_.empty(); }
    const std::vector<FileQuery>& queries() const { return queries_; }
    /** Entry types that some query wants. */
    unsigned types() const { return types_; }
    /** Appends the numbers of the queries that want an entry, each once. Any thread may ask. */
    void find(std::string_view directory, std::string_view name, EntryType type,
              std::vector<std::uint32_t>* numbers) const;
    /** Directories that the search must go through, none inside another. */
    std::vector<std::string> areas() const;

  private:
    std::vector<FileQuery> queries_;
    std::unordered_map<std::string, std::uint32_t> numbers_;  // by key
    NameIndex index_;
    unsigned types_ = 0;
};

/** Sorts directories and leaves out those inside others. */
std::vector<std::string> outermost(std::vector<std::string> directories);

}  // namespace zuksw
