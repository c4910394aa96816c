#pragma once

#include <cstddef>

// A regular file, open for reading. Anything else (a directory, a FIFO, a device) is refused without
// waiting for it.
class InputFile {
  public:
    explicit InputFile(const char* path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Reads up to `size` bytes and returns how many; 0 at the end of the file, and after a failure.
    std::size_t read(void* buffer, std::size_t size);
    // Why the file could not be opened or read, in ASCII; null as long as nothing failed.
    const char* failure() const { return failure_; }

  private:
    int descriptor_;
    const char* failure_ = nullptr;
};
