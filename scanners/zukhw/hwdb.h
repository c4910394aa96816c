#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "scanners/zukhw/paged_file.h"

class Machine;

// udev's compiled hardware database, hwdb.bin: patterns of device names with properties, as a prefix tree;
// machine.shared<Hwdb>().
//
// Read by us, because libudev opens the running machine's database whatever root is given, and maps all of
// it.
class Hwdb {
  public:
    using Properties = std::map<std::string, std::string>;

    explicit Hwdb(Machine& machine);

    bool available() const { return rootOffset_ != 0; }

    // The properties of all patterns that match a name like "pci:v00008086d00001237..."; where several set
    // the same, the one that is more literal counts. Empty when none matches or the file is broken. Patterns
    // with classes of characters, which no list of names has, are not followed.
    Properties lookup(const std::string& name);

  private:
    struct Node {
        std::string prefix;
        std::vector<std::pair<char, std::uint64_t>> children;  // next character, offset of the node
        std::uint64_t values = 0;                              // offset of the first entry
        std::uint64_t valueCount = 0;
    };
    class Search;

    bool readNode(std::uint64_t offset, Node* node);
    void addValues(const Node& node, Properties* found);

    PagedFile file_;
    std::uint64_t rootOffset_ = 0;
    std::uint64_t nodeSize_ = 0, childSize_ = 0, valueSize_ = 0;
};
