#include "bench/support/directory_floor.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <condition_variable>
#include <cstring>
#include <fstream>
#include <iterator>
#include <mutex>
#include <sstream>
#include <thread>
#include <unordered_set>
#include <vector>

namespace {

constexpr std::size_t kBlock = std::size_t{128} * 1024;

std::unordered_set<std::string> mountPoints() {
    std::unordered_set<std::string> points;
    std::ifstream mounts("/proc/self/mountinfo");
    for (std::string line; std::getline(mounts, line);) {
        std::istringstream fields(line);
        std::string skipped;
        std::string point;
        fields >> skipped >> skipped >> skipped >> skipped >> point;
        points.insert(point);
    }
    return points;
}

class Floor {
  public:
    explicit Floor(const std::string& root) : mountPoints_(mountPoints()), open_{root == "/" ? "" : root} {}

    std::uint64_t run(unsigned threads) {
        std::vector<std::thread> others;
        for (unsigned i = 1; i < threads; ++i) others.emplace_back([this] { work(); });
        work();
        for (std::thread& other : others) other.join();
        return entries_;
    }

  private:
    // Goes on until nothing is open and nobody can find more.
    void work() {
        std::vector<char> block(kBlock);
        std::vector<std::string> found;
        std::uint64_t entries = 0;
        std::unique_lock<std::mutex> lock(mutex_);
        while (true) {
            changed_.wait(lock, [this] { return !open_.empty() || busy_ == 0; });
            if (open_.empty()) break;
            const std::string directory = std::move(open_.back());
            open_.pop_back();
            ++busy_;
            lock.unlock();
            entries += read(directory, &block, &found);
            lock.lock();
            --busy_;
            std::move(found.begin(), found.end(), std::back_inserter(open_));
            if (!found.empty() || busy_ == 0) changed_.notify_all();
            found.clear();
        }
        entries_ += entries;
    }

    std::uint64_t read(const std::string& directory, std::vector<char>* block,
                       std::vector<std::string>* found) const {
        const int fd =
            open((directory + "/").c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
        if (fd < 0) return 0;
        std::uint64_t entries = 0;
        for (long size = 0; (size = syscall(SYS_getdents64, fd, block->data(), block->size())) > 0;) {
            for (long at = 0; at < size;) {
                const auto* entry = reinterpret_cast<const dirent64*>(block->data() + at);
                at += entry->d_reclen;
                const char* name = static_cast<const char*>(entry->d_name);
                if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) continue;
                ++entries;
                if (entry->d_type == DT_DIR) addDirectory(directory + "/" + name, found);
            }
        }
        close(fd);
        return entries;
    }

    void addDirectory(std::string path, std::vector<std::string>* found) const {
        if (mountPoints_.count(path) == 0) found->push_back(std::move(path));
    }

    std::unordered_set<std::string> mountPoints_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::string> open_;
    unsigned busy_ = 0;
    std::uint64_t entries_ = 0;
};

}  // namespace

std::uint64_t walkDirectories(const std::string& root, unsigned threads) {
    return Floor(root).run(threads);
}
