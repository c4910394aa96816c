#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/language/scope.h"

namespace zuksw {

/** A part of a template: literal text, or a reference to be replaced. */
struct TemplatePiece {
    enum class Type { kLiteral, kText, kProperty, kHost };
    Type type = Type::kLiteral;
    std::string text;  // the literal, or the property (for kHost "name" or "machine")
    Slot slot = 0;     // of kText and kProperty
    std::optional<std::string> fallback;
};

/** A text with references: "${name}", "${object.property}", "${name:-text}"; "$$" is a dollar sign, and a
 *  dollar sign before anything else is itself. */
class Template {
  public:
    /** The most bytes that replacing the references may make: few references can stand for very long texts.
     */
    static constexpr std::size_t kMaxExpanded = std::size_t{1} << 16U;

    Template() = default;
    /** Mistakes are reported to the scope. */
    static Template parse(std::string_view text, Scope* scope, std::size_t offset);
    static Template ofLiteral(std::string text);

    /** True when it holds no reference; then literal() is its text. */
    bool isLiteral() const { return pieces_.empty(); }
    const std::string& literal() const { return literal_; }
    const std::vector<TemplatePiece>& pieces() const { return pieces_; }

    /** The text with every reference replaced by `stand`, for checks before anything is bound. */
    std::string withStandIn(std::string_view stand) const;

  private:
    std::string literal_;
    std::vector<TemplatePiece> pieces_;  // empty for a literal
};

}  // namespace zuksw
