#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

// A regular file in memory: an input for what reads files by their path.
class MemoryFile {
  public:
    MemoryFile(const void* data, std::size_t size) : descriptor_(memfd_create("input", MFD_CLOEXEC)) {
        if (descriptor_ < 0 || write(descriptor_, data, size) != static_cast<ssize_t>(size)) {
            throw std::runtime_error("no memory file");
        }
    }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
    std::wstring widePath() const {
        const std::string narrow = path();
        return {narrow.begin(), narrow.end()};
    }

  private:
    int descriptor_;
};
