#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "scanners/zuksw/files/file_tree.h"
#include "scanners/zuksw/index/file_query.h"
#include "scanners/zuksw/output/events.h"
#include "scanners/zuksw/setup/budget.h"
#include "scanners/zuksw/setup/configuration.h"
#include "scanners/zuksw/walk/directory.h"
#include "scanners/zuksw/walk/gaps.h"
#include "scanners/zuksw/walk/territory.h"

namespace zuksw {

/** Goes once through all directories that some query can reach and keeps what the queries select. Nothing but
 *  directories is opened, and nothing is asked about a file but what its directory says. */
class Walker {
  public:
    struct Places {
        const FileTree& tree;
        const Territory& territory;
        const Configuration& configuration;
        const Budget& budget;
        Events& events;
        Gaps& gaps;
    };
    Walker(const Places& places, const QuerySet& queries);

    /** Walks with that many threads; returns when all is done or the budget is spent. */
    void run(unsigned threads);

    /** What the queries selected, by their numbers, and of each in byte order of the paths. Take it once. */
    std::vector<Candidate> takeCandidates() { return std::move(candidates_); }
    std::uint64_t entries() const { return entries_; }

  private:
    struct Directory {
        std::string path;
        std::uint64_t depth;  // levels below its root
    };
    // What one thread works on.
    struct Worker {
        std::vector<Directory> open;
        std::vector<Candidate> found;
        std::vector<std::uint32_t> numbers;
        DirectoryReader::Buffer buffer = DirectoryReader::makeBuffer();
        std::uint64_t entries = 0;
    };

    void begin();
    void work(Worker* worker);
    bool takeWork(Worker* worker);
    void shareWork(Worker* worker);
    void readDirectory(const Directory& directory, Worker* worker);
    void readEntry(const Directory& directory, const DirectoryReader::Entry& entry, int descriptor,
                   Worker* worker);
    void notOpened(const std::string& path, int error);
    bool mayGoOn(Worker* worker);

    Places places_;
    const QuerySet& queries_;
    std::vector<Candidate> candidates_;
    std::atomic<std::uint64_t> entries_{0};
    std::atomic<bool> stopped_{false};

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Directory> shared_;
    std::atomic<unsigned> idle_{0};
    std::atomic<unsigned> working_{0};  // threads that have begun, those at their end among them
};

}  // namespace zuksw
