#include "scanners/zuksw/language/template.h"

#include <utility>

#include "scanners/zuksw/language/identifier.h"

namespace zuksw {
namespace {

// What stands between "${" and "}".
TemplatePiece parseReference(std::string_view text, Scope* scope, std::size_t offset) {
    TemplatePiece piece;
    const std::size_t separator = text.find(":-");
    if (separator != text.npos) piece.fallback = std::string(text.substr(separator + 2));
    const std::string_view reference = text.substr(0, separator);
    const std::size_t dot = reference.find('.');
    const std::string_view name = reference.substr(0, dot);
    const std::string_view property = dot == reference.npos ? std::string_view() : reference.substr(dot + 1);
    if (!isIdentifier(name) || (dot != reference.npos && property.empty())) {
        scope->report(offset, "'${" + std::string(text) +
                                  "}' is no reference; write ${name}, ${object.property} or ${name:-text}");
        return piece;
    }
    if (name == "host") {
        piece.type = TemplatePiece::Type::kHost;
        piece.text = std::string(property);
        if (property != "name" && property != "machine") {
            scope->report(offset, "'host' has the properties name and machine only");
        }
        return piece;
    }
    piece.type = property.empty() ? TemplatePiece::Type::kText : TemplatePiece::Type::kProperty;
    piece.text = std::string(property);
    piece.slot = scope->use(name, property, offset);
    return piece;
}

}  // namespace

Template Template::ofLiteral(std::string text) {
    Template result;
    result.literal_ = std::move(text);
    return result;
}

Template Template::parse(std::string_view text, Scope* scope, std::size_t offset) {
    Template result;
    if (text.find('$') == text.npos) return ofLiteral(std::string(text));
    std::string literal;
    const auto flush = [&] {
        if (literal.empty()) return;
        TemplatePiece piece;
        piece.text = std::exchange(literal, {});
        result.pieces_.push_back(std::move(piece));
    };
    bool references = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] != '$' || (next != '$' && next != '{')) {
            literal += text[i];
            continue;
        }
        if (next == '$') {
            literal += '$';
            ++i;
            continue;
        }
        const std::size_t close = text.find('}', i);
        if (close == text.npos) {
            scope->report(offset, "'${' has no '}'; close it or write '$$' for a dollar sign");
            return ofLiteral(std::string(text));
        }
        flush();
        result.pieces_.push_back(parseReference(text.substr(i + 2, close - i - 2), scope, offset));
        references = true;
        i = close;
    }
    if (!references) return ofLiteral(std::move(literal));
    flush();
    return result;
}

std::string Template::withStandIn(std::string_view stand) const {
    if (isLiteral()) return literal_;
    std::string text;
    for (const TemplatePiece& piece : pieces_) {
        text += piece.type == TemplatePiece::Type::kLiteral ? std::string_view(piece.text) : stand;
    }
    return text;
}

}  // namespace zuksw
