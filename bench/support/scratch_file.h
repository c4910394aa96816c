#pragma once

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

// An empty file that is removed with the object.
class ScratchFile {
  public:
    ScratchFile() : path_("/tmp/zuk_bench_XXXXXX") {
        const int descriptor = mkstemp(path_.data());
        if (descriptor < 0) throw std::runtime_error("cannot create " + path_);
        close(descriptor);
    }
    ~ScratchFile() { unlink(path_.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};
