#pragma once

#include <cstdint>
#include <map>
#include <string>
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

    // The properties of all patterns that match a name like "pci:v00008086d00001237sv*"; where several set
    // the same, the longest match counts. Empty when none matches or the file is broken.
    Properties lookup(const std::string& name);

  private:
    struct Node {
        std::string prefix;
        std::map<char, std::uint64_t> children;  // by the next character: offsets of nodes
        std::vector<std::uint64_t> values;       // offsets of entries
    };
    struct Search;

    bool readNode(std::uint64_t offset, Node* node);
    void walk(Search* search);
    void matchPatterns(std::uint64_t offset, std::size_t skip, const std::string& pattern, Search* search);
    void addValues(const Node& node, Search* search);

    PagedFile file_;
    std::uint64_t rootOffset_ = 0;
    std::uint64_t nodeSize_ = 0, childSize_ = 0, valueSize_ = 0;
};
