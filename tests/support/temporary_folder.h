#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

// A folder of the test's own under the system's temporary one, removed with all that is in it.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zuk_test_XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot create " + pattern);
        path_ = pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }

    // Writes a file and gives its path.
    std::string file(const std::string& name, std::string_view content, mode_t mode = 0644) const {
        std::string full = path_ + "/" + name;
        std::ofstream(full, std::ios::binary) << content;
        chmod(full.c_str(), mode);
        return full;
    }

    // Writes a shell script that can be started and gives its path.
    std::string script(const std::string& name, const std::string& body) const {
        return file(name, "#!/bin/sh\n" + body + "\n", 0755);
    }

  private:
    std::string path_;
};
