#include "scanners/zuksw/language/condition_reader.h"

#include <algorithm>
#include <charconv>

#include "scanners/zuksw/language/suggestion.h"

namespace zuksw {

std::optional<std::uint64_t> parseNumber(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

void ConditionReader::report(std::string text) {
    scope_->report(element_.offset, "<" + std::string(element_.name) + ">: " + std::move(text));
}

void ConditionReader::bad(std::string_view attribute, std::string_view value, const std::string& why) {
    report(std::string(attribute) + "=\"" + std::string(value.substr(0, 200)) + "\": " + why);
}

std::optional<std::string_view> ConditionReader::raw(std::string_view attribute) {
    asked_.push_back(attribute);
    for (std::size_t i = 0; i < element_.attributes.size(); ++i) {
        if (element_.attributes[i].name != attribute) continue;
        taken_[i] = true;
        return element_.attributes[i].value;
    }
    return std::nullopt;
}

void ConditionReader::require(std::string_view attribute) {
    if (!has(attribute)) reportLack("the attribute '" + std::string(attribute) + "' is missing; add it");
}

std::optional<Template> ConditionReader::text(std::string_view attribute) {
    const auto value = raw(attribute);
    if (!value) return std::nullopt;
    return Template::parse(*value, scope_, element_.offset);
}

std::optional<std::string> ConditionReader::fixedText(const Template& text,
                                                      std::string (*quote)(std::string_view)) const {
    if (text.isLiteral()) return text.literal();
    std::string result;
    for (const TemplatePiece& piece : text.pieces()) {
        if (piece.type == TemplatePiece::Type::kLiteral) {
            result += piece.text;
            continue;
        }
        if (piece.type != TemplatePiece::Type::kText || scope_->fixed(piece.slot) == nullptr)
            return std::nullopt;
        result += quote(*scope_->fixed(piece.slot));
        if (result.size() > Template::kMaxExpanded) return std::nullopt;  // the scan will find it unset
    }
    return result;
}

std::optional<GlobTemplate> ConditionReader::glob(std::string_view attribute, bool name, bool relative) {
    const auto value = raw(attribute);
    if (!value) return std::nullopt;
    if (value->empty()) {
        bad(attribute, *value, "it is empty and matches nothing; write a glob");
        return std::nullopt;
    }
    GlobTemplate glob;
    glob.text = Template::parse(*value, scope_, element_.offset);
    std::optional<std::string> fixed = fixedText(glob.text, quoteGlob);
    const std::string standIn = fixed ? std::string() : glob.text.withStandIn("x");
    const std::string& text = fixed ? *fixed : standIn;
    if (!name && !relative) {
        const bool open = !fixed && glob.text.pieces()[0].type != TemplatePiece::Type::kLiteral;
        if (!open && text[0] != '/' && text.compare(0, 2, "**") != 0 && text[0] != '{') {
            bad(attribute, *value,
                "an absolute path begins with '/' or '**'; write one of them or use 'near'");
            return std::nullopt;
        }
    }
    std::string error;
    std::optional<Glob> parsed = name ? Glob::parseName(text, &error) : Glob::parsePath(text, &error);
    if (!parsed) {
        bad(attribute, *value, error);
        return std::nullopt;
    }
    if (fixed) glob.fixed = std::move(parsed);
    glob.pattern = fixed ? *std::move(fixed) : glob.text.withStandIn("*");
    return glob;
}

std::optional<GlobTemplate> ConditionReader::nameGlob(std::string_view attribute) {
    return glob(attribute, true, true);
}

std::optional<GlobTemplate> ConditionReader::pathGlob(std::string_view attribute, bool relative) {
    return glob(attribute, false, relative);
}

std::optional<PatternTemplate> ConditionReader::pattern(std::string_view attribute, bool wholeText) {
    const auto value = raw(attribute);
    if (!value) return std::nullopt;
    PatternTemplate result;
    result.text = Template::parse(*value, scope_, element_.offset);
    result.wholeText = wholeText;
    const std::optional<std::string> fixed = fixedText(result.text, quotePattern);
    std::string text = fixed ? *fixed : result.text.withStandIn("x");
    if (wholeText) text = wholePattern(text);
    std::string error;
    const std::shared_ptr<const Pattern> pattern = patterns_->get(text, &error);
    if (!pattern) {
        bad(attribute, *value, "no valid pattern: " + error);
        return std::nullopt;
    }
    for (const PatternGroup& group : pattern->groups()) {
        result.groups.emplace_back(group.name, scope_->bind(group.name, Kind::kText, element_.offset));
    }
    if (fixed) result.fixed = pattern;
    return result;
}

Comparison ConditionReader::comparison() {
    using Operator = Comparison::Operator;
    constexpr std::pair<const char*, Operator> kOperators[] = {{"eq", Operator::kEq}, {"ne", Operator::kNe},
                                                               {"lt", Operator::kLt}, {"le", Operator::kLe},
                                                               {"gt", Operator::kGt}, {"ge", Operator::kGe}};
    Comparison comparison;
    for (const auto& [name, op] : kOperators) {
        std::optional<Template> bound = text(name);
        if (bound) comparison.bounds.emplace_back(op, *std::move(bound));
    }
    comparison.match = pattern("match");
    const auto scheme = raw("scheme");
    if (scheme) {
        comparison.scheme = schemeByName(*scheme);
        if (!comparison.scheme)
            bad("scheme", *scheme,
                "no such scheme; write generic, which is right for most versions, deb, rpm, apk, pacman, "
                "semver, "
                "pep440, maven, gem, number, text or textnocase");
    }
    return comparison;
}

std::optional<std::uint64_t> ConditionReader::number(std::string_view attribute) {
    const auto value = raw(attribute);
    if (!value) return std::nullopt;
    const auto parsed = parseNumber(*value);
    if (!parsed) bad(attribute, *value, "write a whole number without sign or unit");
    return parsed;
}

std::optional<std::size_t> ConditionReader::choice(std::string_view attribute,
                                                   std::initializer_list<std::string_view> words) {
    const auto value = raw(attribute);
    if (!value) return std::nullopt;
    const auto found = std::find(words.begin(), words.end(), *value);
    if (found != words.end()) return static_cast<std::size_t>(found - words.begin());
    std::string list;
    for (const std::string_view word : words) list += (list.empty() ? "" : ", ") + std::string(word);
    bad(attribute, *value, "write one of: " + list);
    return std::nullopt;
}

std::optional<bool> ConditionReader::yesNo(std::string_view attribute) {
    const auto which = choice(attribute, {"no", "yes"});
    if (!which) return std::nullopt;
    return *which == 1;
}

std::optional<Slot> ConditionReader::binds(std::string_view attribute, Kind kind) {
    const auto name = raw(attribute);
    if (!name) return std::nullopt;
    return scope_->bind(*name, kind, element_.offset);
}

std::optional<Slot> ConditionReader::object(std::string_view attribute, Kind kind) {
    const auto name = raw(attribute);
    if (!name) return std::nullopt;
    return scope_->useObject(*name, kind, element_.offset);
}

void ConditionReader::finish() {
    for (std::size_t i = 0; i < taken_.size(); ++i) {
        if (taken_[i] || scope_->hasManyProblems()) continue;
        const std::string_view name = element_.attributes[i].name;
        report("the attribute '" + std::string(name) + "' is unknown here; " + suggest(name, asked_));
    }
    for (std::string& lack : lacks_) report(std::move(lack));
}

}  // namespace zuksw
