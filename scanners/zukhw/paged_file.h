#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "platform/file_descriptor.h"

// A large file of which little is needed: read page by page as it is asked for, and not mapped, because a
// mapping brings sixteen pages for each one touched and a signal when the file is cut short.
class PagedFile {
  public:
    explicit PagedFile(FileDescriptor fd) : fd_(std::move(fd)) {}

    bool isOpen() const { return fd_.valid(); }

    // Copies `size` bytes from `offset`; false when the file does not have them all.
    bool read(std::uint64_t offset, void* to, std::size_t size);
    // The text up to the next NUL; empty when there is none within `limit` bytes.
    std::string text(std::uint64_t offset, std::size_t limit);

  private:
    const std::string& page(std::uint64_t number);

    FileDescriptor fd_;
    std::map<std::uint64_t, std::string> pages_;
};
