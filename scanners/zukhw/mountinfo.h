#pragma once

#include <string>
#include <string_view>
#include <vector>

class Machine;
class SourceLog;

// One line of /proc/self/mountinfo; blanks in it are decoded.
struct Mount {
    std::string device;  // "8:1", major and minor
    std::string root;    // what of the file system is mounted: "/" for all of it
    std::string point;
    std::string options;  // of this mount, comma separated
    std::string type;
    std::string source;
    std::string superOptions;  // of the file system
};

// Lines that are broken are skipped and told to the log.
std::vector<Mount> parseMountinfo(std::string_view text, SourceLog* log);

// The mounts in the order in which they were made; machine.shared<Mountinfo>().
//
// Parsed here: libmount reads the running machine's file whatever root it is given, and brings three
// libraries.
class Mountinfo {
  public:
    explicit Mountinfo(Machine& machine);

    const std::vector<Mount>& mounts() const { return mounts_; }
    // Where the block device "8:1" is mounted, in order.
    std::vector<std::string> pointsOf(std::string_view device) const;

  private:
    std::vector<Mount> mounts_;
};
