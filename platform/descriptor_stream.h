#pragma once

#include <vector>

#include "platform/file_descriptor.h"
#include "platform/runtime.h"

// Reads a descriptor's bytes through a buffer.
class DescriptorStream final : public Stream {
  public:
    explicit DescriptorStream(FileDescriptor source);

    int read() override { return next_ != end_ ? *next_++ : refill(); }
    // Gives the descriptor up: what is not buffered yet is lost.
    void close() { source_.reset(); }

  private:
    int refill();

    FileDescriptor source_;
    std::vector<unsigned char> buffer_;
    const unsigned char* next_ = nullptr;
    const unsigned char* end_ = nullptr;
};
