#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/file_descriptor.h"

namespace zuksw {

/** Reads the entries of a directory in large blocks, in the order in which the file system has them. */
class DirectoryReader {
  public:
    struct Entry {
        std::string_view name;  // valid until the next call
        unsigned char type;     // DT_REG and the like, DT_UNKNOWN when the file system does not say
    };
    /** Room for one block; may serve one reader after another. */
    using Buffer = std::vector<char>;
    static Buffer makeBuffer() { return Buffer(std::size_t{128} * 1024); }

    DirectoryReader(FileDescriptor directory, Buffer* buffer) : fd_(std::move(directory)), buffer_(buffer) {}

    /** False at the end, or with error() set. "." and ".." are left out. */
    bool next(Entry* entry);
    /** An errno value, 0 for none. */
    int error() const { return error_; }
    /** Whether the next call of next() has to ask the kernel: a good moment to look at the clock. */
    bool atBlockEnd() const { return at_ == end_; }

    int descriptor() const { return fd_.get(); }

  private:
    bool fill();

    FileDescriptor fd_;
    Buffer* buffer_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    int error_ = 0;
};

/** The DT_ value of an entry that the directory itself did not say the type of; DT_UNKNOWN when it is gone.
 */
unsigned char typeOfEntry(int directory, std::string_view name);

}  // namespace zuksw
