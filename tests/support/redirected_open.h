#pragma once

#include <map>
#include <string>
#include <vector>

// While one lives, fopen() of `path` opens `instead`, or fails with ENOENT when `instead` is empty. So the
// files of the real machine, /etc/zuk/zuk.ini first of all, are neither read nor written by a test.
class RedirectedOpen {
  public:
    RedirectedOpen(const std::string& path, const std::string& instead);
    ~RedirectedOpen();
    RedirectedOpen(const RedirectedOpen&) = delete;
    RedirectedOpen& operator=(const RedirectedOpen&) = delete;

    // How often fopen() was asked for the path since this was made.
    int opened() const;

  private:
    std::string path_;
};
