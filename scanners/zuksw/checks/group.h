#pragma once

#include <memory>
#include <vector>

#include "scanners/zuksw/evaluation/check.h"
#include "scanners/zuksw/language/condition_reader.h"

namespace zuksw {

class DetectReader;

/** A condition made of conditions. */
class Group : public Check {
  public:
    bool isOrdered() const override;
    Cost cost() const override;
    void demand(std::vector<FileQuery>* queries) const override;
    bool asksForProcesses() const override;

  protected:
    /** Reads the children; reports a group without any. */
    Group(ConditionReader& attributes, DetectReader& reader);

    /** Names bound by the children stay bound behind the group. */
    void exportBindings();
    /** They do not; but what the children bind is compared with what is bound before. */
    void keepBindings();

    std::vector<std::unique_ptr<Check>> children_;
};

/** Children in an order that respects bindings: one that uses a name comes after those that bind it; among
 * the rest the cheap ones come first. */
class All : public Group {
  public:
    All(ConditionReader& attributes, DetectReader& reader);

    bool beginsWithWalk() const override {
        return isPlain() && !children_.empty() && children_.front()->beginsWithWalk();
    }

    /** The number of steps, and one of them: every row of `rows` replaced by what it becomes, until there are
     *  more rows than are allowed. */
    std::size_t steps() const { return children_.size(); }
    void step(std::size_t which, const Rows& rows, const Context& context, Rows* out) const;

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override;
};

}  // namespace zuksw
