#include "scanners/zuksw/evaluation/match.h"

#include <utility>

#include "scanners/zuksw/evaluation/expand.h"

namespace zuksw {
namespace {

std::string toString(const re2::StringPiece& piece) {
    return std::string(piece.data(), piece.size());
}

bool holds(Comparison::Operator op, int order) {
    switch (op) {
        case Comparison::Operator::kEq:
            return order == 0;
        case Comparison::Operator::kNe:
            return order != 0;
        case Comparison::Operator::kLt:
            return order < 0;
        case Comparison::Operator::kLe:
            return order <= 0;
        case Comparison::Operator::kGt:
            return order > 0;
        case Comparison::Operator::kGe:
            return order >= 0;
    }
    return false;
}

}  // namespace

std::shared_ptr<const Pattern> resolvePattern(const PatternTemplate& pattern, const Row& row,
                                              const Context& context, Text* state) {
    if (pattern.fixed) return pattern.fixed;
    *state = expand(pattern.text, row, context, quotePattern);
    if (!state->isSet()) return nullptr;
    std::string error;
    auto resolved =
        context.machine.patterns.get(pattern.wholeText ? wholePattern(state->text) : state->text, &error);
    if (!resolved) *state = {};
    return resolved;
}

MatchResult matchText(const PatternTemplate& pattern, std::string_view text, const Row& row,
                      const Context& context) {
    MatchResult result;
    const auto resolved = resolvePattern(pattern, row, context, &result.text);
    const re2::RE2* engine = resolved ? resolved->engine() : nullptr;
    if (engine == nullptr) return result;
    result.text = {};
    std::vector<re2::StringPiece> pieces(static_cast<std::size_t>(engine->NumberOfCapturingGroups()) + 1);
    const re2::StringPiece data(text.data(), text.size());
    if (!engine->Match(data, 0, data.size(), re2::RE2::UNANCHORED, pieces.data(),
                       static_cast<int>(pieces.size()))) {
        return result;
    }
    for (const PatternGroup& group : resolved->groups()) {
        const re2::StringPiece& piece = pieces[static_cast<std::size_t>(group.index)];
        result.captures.push_back(piece.data() == nullptr ? std::nullopt
                                                          : std::make_optional(toString(piece)));
    }
    for (const re2::StringPiece& piece : pieces) result.brackets.push_back(toString(piece));
    result.text = Text::of(result.brackets.front());
    return result;
}

bool bindText(Slot slot, std::string text, const Context& context, Row* row) {
    if (text.size() > context.machine.configuration.content.maxCapture) {
        text.resize(context.machine.configuration.content.maxCapture);
    }
    return row->bind(slot, text);
}

bool bindCaptures(const PatternTemplate& pattern, const Captures& captures, const Context& context,
                  Row* row) {
    for (std::size_t i = 0; i < captures.size(); ++i) {
        if (captures[i] && !bindText(pattern.groups[i].second, *captures[i], context, row)) return false;
    }
    return true;
}

Answer acceptGlob(const GlobTemplate& glob, std::string_view text, const Row& row, const Context& context) {
    if (glob.fixed) return Answer::of(glob.fixed->matches(text));
    const Text expanded = expand(glob.text, row, context, quoteGlob);
    if (!expanded.isSet()) return Answer::missing(expanded);
    std::string error;
    const auto parsed = Glob::parsePath(expanded.text, &error);
    return Answer::of(parsed && parsed->matches(text));
}

Answer acceptText(const Template& wanted, std::string_view text, const Row& row, const Context& context) {
    const Text expanded = expand(wanted, row, context);
    return expanded.isSet() ? Answer::of(expanded.text == text) : Answer::missing(expanded);
}

Answer compare(const Comparison& comparison, const std::string& value, Scheme defaultScheme,
               const Context& context, Row* row) {
    const Scheme scheme = comparison.scheme.value_or(defaultScheme);
    Causes causes = 0;
    for (const auto& [op, bound] : comparison.bounds) {
        const Text other = expand(bound, *row, context);
        if (!other.isSet()) {
            if (other.state == Text::State::kUnset) return Answer::no();
            causes |= other.causes;
            continue;
        }
        const std::optional<int> order = compareVersions(scheme, value, other.text);
        if (!order) {
            context.event(EventCode::kVersionSyntax, "a value is no version of the scheme " +
                                                         std::string(schemeName(scheme)) +
                                                         "; the comparison is false");
            return Answer::no();
        }
        if (!holds(op, *order)) return Answer::no();
    }
    if (comparison.match) {
        const MatchResult match = matchText(*comparison.match, value, *row, context);
        if (match.text.state == Text::State::kUnset) return Answer::no();
        causes |= match.text.causes;
        if (match.text.isSet() && !bindCaptures(*comparison.match, match.captures, context, row))
            return Answer::no();
    }
    return causes == 0 ? Answer::yes() : Answer::unknown(causes);
}

}  // namespace zuksw
