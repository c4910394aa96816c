#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zuksw {

/** What a name of a signature stands for. */
enum class Kind : std::uint8_t { kText = 1, kFile = 2, kPackage = 4, kProcess = 8, kTag = 16, kMatched = 32 };

/** Where a row keeps what a name is bound to. */
using Slot = std::uint16_t;

/** Something wrong in a signature: where, and a sentence that says what to do about it. */
struct Problem {
    std::size_t offset = 0;
    std::string text;
};

/** The names that one signature binds and uses. Binding and use may come in any order; what is used but bound
 *  nowhere is found at the end. */
class Scope {
  public:
    /** Names that the conditions read so far bind and use; a group of conditions looks at what its children
     *  added. */
    struct Names {
        std::vector<Slot> binds;
        std::vector<Slot> uses;
    };

    /** Notes that something binds `name`. */
    Slot bind(std::string_view name, Kind kind, std::size_t offset);
    /** Notes a use of the text `name` (property empty) or of a property of the object `name`. */
    Slot use(std::string_view name, std::string_view property, std::size_t offset);
    /** Notes that an attribute such as `of` wants the object `name` itself. */
    Slot useObject(std::string_view name, Kind kind, std::size_t offset);

    /** Makes the name stand for one text from the beginning, as an Input with a value does. */
    void fix(Slot slot, std::string text) { entries_[slot].fixed = std::move(text); }
    /** The text that the name always stands for, or null when only a scan can tell. */
    const std::string* fixed(Slot slot) const {
        return entries_[slot].fixed ? &*entries_[slot].fixed : nullptr;
    }

    /** Whether some condition or Input binds the name. */
    bool isBound(std::string_view name) const;
    bool isText(Slot slot) const { return entries_[slot].kinds == static_cast<unsigned>(Kind::kText); }
    std::size_t size() const { return entries_.size(); }
    const std::string& name(Slot slot) const { return entries_[slot].name; }

    /** Makes *names receive what is bound and used from now on; returns the one before. */
    Names* track(Names* names);

    /** Notes a mistake. Beyond the first few they are not kept: a hostile file can hold millions. */
    void report(std::size_t offset, std::string text) {
        if (problems_.size() < kMaxProblems) problems_.push_back({offset, std::move(text)});
    }
    /** Whether further mistakes are not kept, so that nobody need explain them. */
    bool hasManyProblems() const { return problems_.size() == kMaxProblems; }
    /** Notes something that works, but not well. */
    void advise(std::size_t offset, std::string text) { advice_.push_back({offset, std::move(text)}); }
    const std::vector<Problem>& advice() const { return advice_; }
    /** Checks every use against the bindings. Call once, at the end. */
    void checkUses();
    const std::vector<Problem>& problems() const { return problems_; }

  private:
    static constexpr std::size_t kMaxProblems = 20;

    struct Entry {
        std::string name;
        unsigned kinds = 0;
        std::optional<std::string> fixed;
    };
    struct Use {
        Slot slot;
        unsigned wanted;  // kinds that would do
        std::string property;
        std::size_t offset;
    };
    Slot slotOf(std::string_view name, std::size_t offset);
    std::string explain(const Use& use) const;
    std::string remedyForUnbound(const Use& use) const;

    std::vector<Entry> entries_;
    std::unordered_map<std::string, Slot> slots_;
    std::vector<Use> uses_;
    std::vector<Problem> problems_;
    std::vector<Problem> advice_;
    Names* names_ = nullptr;
};

}  // namespace zuksw
