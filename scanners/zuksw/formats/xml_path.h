#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zuksw {

/** A path of element names: `/a/b[@x='y']/c`, `//b` for any depth, `*` for any name, the last step may be
 *  `@attribute`. Names are local names. */
class XmlPath {
  public:
    static constexpr std::size_t kMaxSteps = 63;

    using Attributes = std::vector<std::pair<std::string_view, std::string_view>>;

    /** Which steps the elements from the root to some element have walked: bit i stands for "i steps are
     *  walked, and the next may be walked by a child". */
    using Progress = std::uint64_t;

    /** What is wrong with the path; empty when it is good. */
    static std::string problem(std::string_view path);

    explicit XmlPath(std::string_view path);

    /** The progress before the root element. */
    static Progress begin() { return 1; }

    /** The progress of an element in a parent of progress `parent`. `wanted` tells whether the whole path
     *  leads to the element. */
    Progress enter(Progress parent, std::string_view name, const Attributes& attributes, bool* wanted) const;

    /** The attribute that the path ends in; empty when it ends in an element. */
    std::string_view attribute() const { return attribute_; }

  private:
    struct Step {
        bool anyDepth = false;
        std::string name;
        std::vector<std::pair<std::string, std::string>> conditions;  // attribute and its value
    };

    // What is wrong with the path; empty, and then it is stored.
    std::string parse(std::string_view path);
    static std::string parseStep(std::string_view text, Step* step);
    static bool fits(const Step& step, std::string_view name, const Attributes& attributes);

    XmlPath() = default;

    std::vector<Step> steps_;
    std::string attribute_;
};

}  // namespace zuksw
