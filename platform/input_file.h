#pragma once

#include <cstddef>

#include "platform/file_descriptor.h"

// A regular file, open for reading. Anything else (a directory, a FIFO, a device) is refused without
// waiting for it.
class InputFile {
  public:
    explicit InputFile(const char* path);

    // Reads up to `size` bytes and returns how many; 0 at the end of the file, and after a failure.
    std::size_t read(void* buffer, std::size_t size);
    // Why the file could not be opened or read, in ASCII; null as long as nothing failed.
    const char* failure() const { return failure_; }

  private:
    FileDescriptor file_;
    const char* failure_ = nullptr;
};
