#include "platform/descriptor_stream.h"

#include <cerrno>

namespace {

// What a pipe holds: a larger buffer would never be filled by one read.
constexpr std::size_t kBufferSize = 64 * 1024;

}  // namespace

DescriptorStream::DescriptorStream(FileDescriptor source)
    : source_(std::move(source)), buffer_(kBufferSize) {}

int DescriptorStream::refill() {
    ssize_t length = 0;
    do {
        length = ::read(source_.get(), buffer_.data(), buffer_.size());
    } while (length < 0 && errno == EINTR);
    if (length <= 0) return -1;
    next_ = buffer_.data();
    end_ = next_ + length;
    return *next_++;
}
