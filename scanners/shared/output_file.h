#pragma once

#include <string>
#include <string_view>

#include "platform/file_descriptor.h"

// A file written in place from beginning to end. It is created for its owner only, since what scanners find
// may be secret from others, or emptied if it was there; a symbolic link in its place is refused.
class OutputFile {
  public:
    explicit OutputFile(const std::string& path);

    bool isOpen() const { return fd_.valid(); }

    // True when every byte reached the file. After a failure every further call fails too.
    bool write(std::string_view bytes);

    // True when everything written so far is in the file: a full disk may show only here.
    bool close();

    // The system's words for the last failure.
    const std::string& error() const { return error_; }

  private:
    bool fail();

    FileDescriptor fd_;
    std::string error_;
};
