#pragma once

#include <re2/set.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scanners/zuksw/index/string_table.h"
#include "scanners/zuksw/language/name_glob.h"
#include "scanners/zuksw/language/pattern.h"

namespace zuksw {

/** Tells for a file name which of very many globs and patterns it matches, at a cost that hardly depends on
 *  their number. Exact names are looked up; what begins or ends in fixed text is found by that text and then
 *  compared; only the rest is tried on every name, as one automaton when it is more than a few. */
class NameIndex {
  public:
    /** number: what find() reports. */
    void add(const NameGlob& glob, std::uint32_t number);
    void add(const std::shared_ptr<const Pattern>& wholeName, std::uint32_t number);
    /** Call once, after the last add(). memory: bytes that the automaton may use. */
    void build(std::int64_t memory);

    /** Appends the numbers of everything that matches; the same number may come twice. Any thread may ask. */
    void find(std::string_view name, std::vector<std::uint32_t>* numbers) const;

  private:
    // Something that is compared with the whole name: a glob or, when `pattern` is set, that.
    struct Matcher {
        NameGlob glob;
        std::shared_ptr<const Pattern> pattern;
        std::uint32_t number;
        bool matches(std::string_view name) const;
    };
    // Which lengths the texts with a certain beginning have: bit n for n bytes.
    using Lengths = std::uint64_t;
    struct Edge {
        StringTable table;                    // text to number of a matcher
        std::array<Lengths, 256> brief = {};  // of texts of one or two bytes, by their first byte
        std::vector<Lengths> lengths;         // of longer ones, by a hash of their first three bytes
        void add(std::string_view text, std::uint32_t matcher);
        template <typename Visit>
        void find(std::string_view name, bool backwards, Visit visit) const;
    };

    void add(Matcher matcher, std::string_view prefix, std::string_view suffix);
    void buildSet(std::int64_t memory);
    void findRest(std::string_view name, std::vector<std::uint32_t>* numbers) const;

    StringTable exact_;
    Edge prefixes_;
    Edge suffixes_;  // texts reversed
    std::vector<Matcher> matchers_;
    std::vector<std::uint32_t> rest_;     // matchers without fixed text at either end
    std::unique_ptr<re2::RE2::Set> set_;  // of rest_, in its order; null: they are tried one by one
};

/** The fixed text that every match of the pattern, taken as a whole, begins with; maybe less than there is.
 */
std::string literalPrefix(const std::string& pattern);

}  // namespace zuksw
