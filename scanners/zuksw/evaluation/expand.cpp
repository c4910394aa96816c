#include "scanners/zuksw/evaluation/expand.h"

namespace zuksw {
namespace {

Text lookUp(const TemplatePiece& piece, const Row& row, const Context& context) {
    if (piece.type == TemplatePiece::Type::kHost) {
        return Text::of(piece.text == "name" ? context.machine.system.hostName()
                                             : context.machine.system.machine());
    }
    const Value& value = row.at(piece.slot);
    if (value.state != Text::State::kSet) return {value.state, value.causes, {}};
    if (piece.type == TemplatePiece::Type::kText) return Text::of(value.text);
    return value.object->property(piece.text, context.machine);
}

}  // namespace

Text expand(const Template& text, const Row& row, const Context& context, Quote quote) {
    if (text.isLiteral()) return Text::of(text.literal());
    Text result = Text::of({});
    for (const TemplatePiece& piece : text.pieces()) {
        if (piece.type == TemplatePiece::Type::kLiteral) {
            result.text += piece.text;
            continue;
        }
        Text value = lookUp(piece, row, context);
        if (value.state == Text::State::kUnset && piece.fallback) value = Text::of(*piece.fallback);
        if (!value.isSet()) return value;
        result.text += quote == nullptr ? value.text : quote(value.text);
        if (result.text.size() > Template::kMaxExpanded) return {};
    }
    return result;
}

std::optional<std::string> expandForReport(const Template& text, const Row& row, const Context& context) {
    if (text.isLiteral()) return text.literal();
    std::string result;
    for (const TemplatePiece& piece : text.pieces()) {
        if (piece.type == TemplatePiece::Type::kLiteral) {
            result += piece.text;
            continue;
        }
        const Text value = lookUp(piece, row, context);
        if (!value.isSet() && !piece.fallback) return std::nullopt;
        result += value.isSet() ? value.text : *piece.fallback;
        if (result.size() > Template::kMaxExpanded) return std::nullopt;
    }
    return result;
}

}  // namespace zuksw
