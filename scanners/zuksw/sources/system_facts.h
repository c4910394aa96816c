#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/files/file_tree.h"

namespace zuksw {

/** Single facts about the machine, such as "os.id" and "kernel.release". What the kernel says is about the
 *  machine that runs; os-release and libc are those of the scanned tree. Any thread may ask. */
class SystemFacts {
  public:
    explicit SystemFacts(const FileTree& tree);

    /** Unset when there is no such fact; unknown when it could not be read. */
    Text fact(const std::string& key);
    const std::string& hostName() const { return hostName_; }
    const std::string& machine() const { return machine_; }

    /** Whether `key` can be a fact at all. */
    static bool isKey(std::string_view key);

  private:
    void readOsRelease();
    void readRest();
    void readLibc();

    const FileTree& tree_;
    std::string hostName_;
    std::string machine_;
    std::map<std::string, std::string> facts_;
    bool osUnreadable_ = false;
    std::once_flag once_;
};

/** The pairs of an os-release file, with keys in lower case and quotes removed. */
std::map<std::string, std::string> parseOsRelease(std::string_view text);

}  // namespace zuksw
