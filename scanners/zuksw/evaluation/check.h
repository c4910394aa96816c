#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "scanners/zuksw/evaluation/row.h"
#include "scanners/zuksw/language/scope.h"

namespace zuksw {

struct Context;
struct FileQuery;

/** Rough cost of a condition; the cheap ones of an All are asked first. */
enum class Cost { kFact, kCandidates, kHeader, kContent, kArchive };

/** One condition of Detect. Immutable once read; any thread may apply it. */
class Check {
  public:
    virtual ~Check() = default;
    Check() = default;
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;

    /** Appends the rows that `row` becomes, with regard to min, max and optional. */
    void apply(const Row& row, const Context& context, Rows* out) const;

    /** Keeps what `row` became within limits/MaxRows. An undecided row stands for those that are dropped,
     * with nothing known of what this condition binds. */
    void limitRows(const Row& row, const Context& context, Rows* rows) const;

    /** True without min, max and optional: apply() is then no more than the condition itself. */
    bool isPlain() const { return min == 1 && !max && !optional; }

    /** Whether it may give other rows when a name that it binds is bound already, and not only fewer: then it
     *  comes after the others that bind the name, in the order of the file. */
    virtual bool isOrdered() const { return !isPlain(); }

    virtual Cost cost() const = 0;
    /** Appends what the walk must look for before the first evaluation. */
    virtual void demand(std::vector<FileQuery>* /*queries*/) const {}
    /** Whether it must be known which processes run. */
    virtual bool asksForProcesses() const { return false; }
    /** True when the condition is surely false unless the walk finds something for the first query that
     *  demand() appends, and nothing else is asked before that. */
    virtual bool beginsWithWalk() const { return false; }

    std::uint32_t position = 0;  // in Detect, in document order
    std::uint64_t min = 1;
    std::optional<std::uint64_t> max;
    bool optional = false;
    Scope::Names names;  // what it binds for the conditions after it, and what it uses

  protected:
    /** The condition itself. `row` is decided. */
    virtual void evaluate(const Row& row, const Context& context, Rows* out) const = 0;

    /** Appends `row`, undecided, with everything that this condition binds unknown. */
    void undecided(const Row& row, Causes causes, Rows* out) const;
    /** Appends `row` with evidence of this condition. */
    void holds(Row row, std::vector<std::pair<const char*, std::string>> evidence, Rows* out) const;

  private:
    void bound(const Row& row, Rows found, Rows* out) const;
};

}  // namespace zuksw
