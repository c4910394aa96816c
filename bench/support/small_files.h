#pragma once

#include <cstddef>
#include <string>

// A tree of many small files in a folder of its own, removed with the object.
class SmallFiles {
  public:
    // `parent` must exist; 200 files a directory, 50 directories in each directory above.
    SmallFiles(const std::string& parent, std::size_t count);
    ~SmallFiles();
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};
