#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "scanners/shared/random_access.h"

// A text file of names by numbers (pci.ids, usb.ids): lines "1af4  Red Hat, Inc.", below them, after a tab
// each, "1000  Virtio network device", and after two tabs "1af4 0001  Subsystem". Classes begin with "C ".
// It has a megabyte or more, of which a machine needs a few lines; they stand in the order of their numbers,
// so that each is found by halving. In a list that is not in order, names may be missed.
class IdsFile {
  public:
    // The file must outlive it.
    explicit IdsFile(const RandomAccess& file);

    // The name of the line with the first key ("1af4", "C 03"), or of the one below it with the second, or of
    // the one below that with the third ("1af4 0001"); empty when there is none.
    std::string name(std::initializer_list<std::string_view> keys);

  private:
    struct Line {
        std::uint64_t begin;
        std::string key;  // its first characters behind the tabs
    };
    struct Lines {
        std::uint64_t begin = 0, end = 0;
    };
    // A line, with the lines below it, and the name that it has.
    struct Entry {
        Lines lines;
        std::string name;
    };

    bool readPiece(std::uint64_t offset, std::uint64_t length);
    Line searchBehind(std::uint64_t from, std::uint64_t end, std::size_t depth);
    const Line& lineBehind(std::uint64_t from, std::size_t depth);
    Entry find(Lines lines, std::size_t depth, std::string_view key);

    const RandomAccess& file_;
    std::uint64_t size_;
    std::string piece_;  // what was read last, kept for its memory
    // The first lines of a depth behind the places that were looked at.
    std::map<std::pair<std::size_t, std::uint64_t>, Line> seen_;
    // What was asked for, by its keys, or its lack: most devices of a machine have a few makers.
    std::map<std::string, Entry> found_;
};
