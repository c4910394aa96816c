#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** A JSON Pointer in which `*` stands for any member or element, followed through a tree whose parts arrive
 *  in document order. */
class TreePath {
  public:
    /** What is wrong with the pointer; empty when it is good. */
    static std::string problem(std::string_view pointer);

    explicit TreePath(std::string_view pointer);

    // An object or array begins. False when that is deeper than kMaxValueDepth.
    bool enterObject() { return enter(false); }
    bool enterArray() { return enter(true); }
    // It ends.
    void leave() { open_.pop_back(); }
    // The name of the member that comes next.
    void member(std::string_view name);
    // A value that is neither comes; true when the pointer leads to it.
    bool atScalar();

  private:
    struct Level {
        bool isArray = false;
        bool matches = false;       // the pointer leads to this container or below it
        bool childMatches = false;  // objects: the same for the member that comes next
        std::size_t next = 0;       // arrays: index of the element that comes next
    };

    bool enter(bool isArray);
    bool nextMatches();

    std::vector<std::string> tokens_;
    std::vector<Level> open_;
};

}  // namespace zuksw
