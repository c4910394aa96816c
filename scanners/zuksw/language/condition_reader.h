#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/language/comparison.h"
#include "scanners/zuksw/language/element.h"
#include "scanners/zuksw/language/path_glob.h"
#include "scanners/zuksw/language/scope.h"
#include "scanners/zuksw/language/template.h"

namespace zuksw {

/** A glob as a signature writes it: references allowed. */
struct GlobTemplate {
    Template text;
    std::optional<Glob> fixed;  // when no scan is needed to know the text
    std::string pattern;        // that text, or with '*' for every reference that is still open
};

/** Takes the attributes of one condition, each by its type. Whatever is wrong is reported to the scope, with
 * a remedy; the value handed out is then empty and the signature will not run. An attribute that nothing took
 * is reported by finish(): a typing error must not widen a match. */
class ConditionReader {
  public:
    ConditionReader(const Element& element, Scope* scope, PatternStore* patterns)
        : element_(element), scope_(scope), patterns_(patterns), taken_(element.attributes.size()) {
        asked_.reserve(kMostAsked);
    }

    bool has(std::string_view attribute) const { return element_.find(attribute) != nullptr; }
    /** The raw value; nothing when it is absent. */
    std::optional<std::string_view> raw(std::string_view attribute);
    /** Reports an absent attribute. */
    void require(std::string_view attribute);
    void report(std::string text);
    /** Reports that something is missing. It comes behind the attributes that are unknown, since it may be
     * one of them, misspelt. */
    void reportLack(std::string text) { lacks_.push_back(std::move(text)); }

    std::optional<Template> text(std::string_view attribute);
    std::optional<GlobTemplate> nameGlob(std::string_view attribute);
    /** relative: the path is taken below some directory; otherwise it must begin with '/' or "**". */
    std::optional<GlobTemplate> pathGlob(std::string_view attribute, bool relative);
    /** wholeText: the pattern must match all of the text, not just a part. */
    std::optional<PatternTemplate> pattern(std::string_view attribute, bool wholeText = false);
    Comparison comparison();

    std::optional<std::uint64_t> number(std::string_view attribute);
    std::optional<bool> yesNo(std::string_view attribute);
    /** Which of the words the value is. */
    std::optional<std::size_t> choice(std::string_view attribute,
                                      std::initializer_list<std::string_view> words);

    /** The name that the attribute binds. */
    std::optional<Slot> binds(std::string_view attribute, Kind kind);
    /** The object that the attribute names. */
    std::optional<Slot> object(std::string_view attribute, Kind kind);

    /** Reports the attributes that nothing took, and what is missing. */
    void finish();

    const Element& element() const { return element_; }
    Scope& scope() const { return *scope_; }
    PatternStore& patterns() const { return *patterns_; }

  private:
    static constexpr std::size_t kMostAsked = 24;

    void bad(std::string_view attribute, std::string_view value, const std::string& why);
    std::optional<std::string> fixedText(const Template& text, std::string (*quote)(std::string_view)) const;
    std::optional<GlobTemplate> glob(std::string_view attribute, bool name, bool relative);

    const Element& element_;
    Scope* scope_;
    PatternStore* patterns_;
    std::vector<bool> taken_;
    std::vector<std::string_view> asked_;  // what this kind of condition knows, for a suggestion
    std::vector<std::string> lacks_;
};

/** Parses "12", nothing else: digits only, no overflow. */
std::optional<std::uint64_t> parseNumber(std::string_view text);

}  // namespace zuksw
