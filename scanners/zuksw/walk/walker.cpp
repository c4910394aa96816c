#include "scanners/zuksw/walk/walker.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "scanners/zuksw/setup/threads.h"

namespace zuksw {
namespace {

constexpr std::size_t kBatch = 32;  // directories handed from thread to thread at a time

EntryType toEntryType(unsigned char type) {
    if (type == DT_REG) return kRegular;
    if (type == DT_DIR) return kDirectory;
    return type == DT_LNK ? kSymlink : EntryType{};
}

}  // namespace

Walker::Walker(const Places& places, const QuerySet& queries) : places_(places), queries_(queries) {}

// Begins at the roots, or below them at the outermost directories that queries can reach.
void Walker::begin() {
    for (const std::string& area : queries_.areas()) {
        for (const std::string& root : places_.territory.roots()) {
            if (isAtOrBelow(root, area)) {
                shared_.push_back({root, 0});
            } else if (isAtOrBelow(area, root) && places_.territory.contains(area)) {
                const auto below = area.begin() + static_cast<std::ptrdiff_t>(root.size());
                shared_.push_back({area, static_cast<std::uint64_t>(std::count(below, area.end(), '/'))});
            }
        }
    }
}

void Walker::run(unsigned threads) {
    begin();
    std::vector<Worker> workers(threads);
    runOnThreads(threads, [&] { work(&workers[working_++]); });
    for (Worker& worker : workers) {
        std::move(worker.found.begin(), worker.found.end(), std::back_inserter(candidates_));
    }
    std::sort(candidates_.begin(), candidates_.end());
}

void Walker::work(Worker* worker) {
    while (!worker->open.empty() || takeWork(worker)) {
        const Directory directory = std::move(worker->open.back());
        worker->open.pop_back();
        if (mayGoOn(worker)) readDirectory(directory, worker);
        if (idle_.load(std::memory_order_relaxed) > 0 && worker->open.size() > 1) shareWork(worker);
    }
    entries_ += worker->entries;
    worker->entries = 0;
}

// False when no thread has anything left.
bool Walker::takeWork(Worker* worker) {
    std::unique_lock<std::mutex> lock(mutex_);
    ++idle_;
    changed_.wait(lock, [this] { return !shared_.empty() || idle_ == working_; });
    if (shared_.empty()) {
        changed_.notify_all();
        return false;
    }
    --idle_;
    const auto count = static_cast<std::ptrdiff_t>(std::min(shared_.size(), kBatch));
    std::move(shared_.end() - count, shared_.end(), std::back_inserter(worker->open));
    shared_.erase(shared_.end() - count, shared_.end());
    return true;
}

// Gives away the directories found first: they are nearest to the root and likely to hold most.
void Walker::shareWork(Worker* worker) {
    const auto count = static_cast<std::ptrdiff_t>(std::min(worker->open.size() / 2, kBatch));
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!shared_.empty()) return;
    std::move(worker->open.begin(), worker->open.begin() + count, std::back_inserter(shared_));
    worker->open.erase(worker->open.begin(), worker->open.begin() + count);
    changed_.notify_one();
}

bool Walker::mayGoOn(Worker* worker) {
    if (stopped_.load(std::memory_order_relaxed)) return false;
    entries_ += worker->entries;
    worker->entries = 0;
    const bool late = places_.budget.isSpent();
    const bool many = entries_ > places_.configuration.search.maxEntries;
    if (!late && !many) return true;
    if (stopped_.exchange(true)) return false;
    places_.gaps.add("", late ? Cause::kTimeBudget : Cause::kNotSearched);
    if (many)
        places_.events.add(EventCode::kNotSearched, {},
                           "more entries than search/MaxEntries; the rest is not searched");
    return false;
}

void Walker::notOpened(const std::string& path, int error) {
    // Gone, or no longer a directory: there is nothing to search.
    if (error == ENOENT || error == ENOTDIR || error == ELOOP) return;
    places_.gaps.add(path, Cause::kUnreadable);
    const bool denied = error == EACCES || error == EPERM;
    places_.events.add(EventCode::kUnreadable, {},
                       denied ? "permission denied; directories not searched" : "directories cannot be read",
                       path.empty() ? "/" : path);
}

void Walker::readDirectory(const Directory& directory, Worker* worker) {
    FileDescriptor fd = places_.tree.openAt(directory.path, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (!fd.valid()) return notOpened(directory.path, errno);
    DirectoryReader reader(std::move(fd), &worker->buffer);
    DirectoryReader::Entry entry = {};
    while (reader.next(&entry)) {
        ++worker->entries;
        readEntry(directory, entry, reader.descriptor(), worker);
        if (reader.atBlockEnd() && !mayGoOn(worker)) return;
    }
    if (reader.error() != 0) notOpened(directory.path, reader.error());
}

void Walker::readEntry(const Directory& directory, const DirectoryReader::Entry& entry, int descriptor,
                       Worker* worker) {
    const unsigned char known = entry.type == DT_UNKNOWN ? typeOfEntry(descriptor, entry.name) : entry.type;
    const EntryType type = toEntryType(known);
    if ((type & queries_.types()) != 0) {
        worker->numbers.clear();
        queries_.find(directory.path, entry.name, type, &worker->numbers);
        if (!worker->numbers.empty()) {
            const std::string path = directory.path + "/" + std::string(entry.name);
            const bool hidden = places_.territory.isExcluded(path);
            for (const std::uint32_t number : worker->numbers) {
                if (!hidden) worker->found.push_back({number, path});
            }
        }
    }
    if (type != kDirectory) return;
    std::string path;
    path.reserve(directory.path.size() + 1 + entry.name.size());
    path.append(directory.path).append("/").append(entry.name);
    if (!places_.territory.enters(path)) return;
    if (directory.depth >= places_.configuration.search.maxDepth) {
        places_.gaps.add(path, Cause::kNotSearched);
        places_.events.add(EventCode::kNotSearched, {}, "deeper than search/MaxDepth; not searched", path);
        return;
    }
    worker->open.push_back({std::move(path), directory.depth + 1});
}

}  // namespace zuksw
