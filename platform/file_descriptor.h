#pragma once

#include <unistd.h>

#include <utility>

// Owns one open file descriptor and closes it.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    ~FileDescriptor() { reset(); }
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        reset(std::exchange(other.descriptor_, -1));
        return *this;
    }

    // Negative when there is none, as open() and its kin report a failure.
    int get() const { return descriptor_; }
    bool valid() const { return descriptor_ >= 0; }
    // Gives the descriptor to the caller, who closes it.
    int release() { return std::exchange(descriptor_, -1); }
    void reset(int descriptor = -1) {
        const int previous = std::exchange(descriptor_, descriptor);
        if (previous >= 0) close(previous);
    }

  private:
    int descriptor_ = -1;
};
