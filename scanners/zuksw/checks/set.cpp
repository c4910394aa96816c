#include <algorithm>
#include <cctype>
#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

enum class Case { kAsIs, kLower, kUpper };

std::string quoteBackslashes(std::string_view text) {
    std::string quoted;
    for (const char c : text) quoted += c == '\\' ? std::string("\\\\") : std::string(1, c);
    return quoted;
}

// Replaces \0 to \9 by what the brackets caught, and \\ by a backslash.
std::string rewrite(const std::string& text, const std::vector<std::string>& brackets) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] != '\\' || (next != '\\' && (next < '0' || next > '9'))) {
            result += text[i];
            continue;
        }
        ++i;
        const auto which = static_cast<std::size_t>(next - '0');
        if (next == '\\') {
            result += '\\';
        } else if (which < brackets.size()) {
            result += brackets[which];
        }
    }
    return result;
}

// Binds a name to a text made of what is bound already.
class Set : public Check {
  public:
    explicit Set(ConditionReader& attributes) {
        attributes.require("name");
        attributes.require("value");
        name_ = attributes.binds("name", Kind::kText);
        value_ = attributes.text("value").value_or(Template());
        match_ = attributes.pattern("match");
        to_ = attributes.text("to");
        else_ = attributes.text("else");
        const auto letters = attributes.choice("case", {"lower", "upper"});
        if (letters) case_ = *letters == 0 ? Case::kLower : Case::kUpper;
        if (!match_ && (to_ || else_))
            attributes.report("'to' and 'else' belong to 'match'; add it or remove them");
        if (match_ && match_->fixed && to_ && to_->isLiteral()) checkBrackets(attributes);
    }

    Cost cost() const override { return Cost::kFact; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override {
        Row found = row;
        Text text = expand(value_, row, context);
        if (text.isSet() && match_) text = matched(text.text, context, &found);
        if (text.state == Text::State::kUnknown) undecided(row, text.causes, out);
        if (!text.isSet() || !bindText(*name_, inCase(std::move(text.text)), context, &found)) return;
        out->push_back(std::move(found));
    }

  private:
    void checkBrackets(ConditionReader& attributes) const {
        const re2::RE2* engine = match_->fixed->engine();
        const int most = engine == nullptr ? 9 : std::min(engine->NumberOfCapturingGroups(), 9);
        const std::string& to = to_->literal();
        for (std::size_t i = to.find('\\'); i < to.size(); i = to.find('\\', i + 2)) {
            const std::string escape = to.substr(i, 2);
            if (escape == "\\\\" || (escape.size() == 2 && escape[1] >= '0' && escape[1] <= '0' + most))
                continue;
            attributes.report("'to' has '" + escape + "'; write \\0 to \\" + std::to_string(most) +
                              " for what 'match' finds, or \\\\ for a backslash");
        }
    }

    Text matched(const std::string& text, const Context& context, Row* row) const {
        const MatchResult match = matchText(*match_, text, *row, context);
        if (match.text.state == Text::State::kUnknown) return match.text;
        if (!match.text.isSet()) return else_ ? expand(*else_, *row, context) : Text();
        if (!bindCaptures(*match_, match.captures, context, row)) return {};
        if (!to_) return match.text;
        Text to = expand(*to_, *row, context, quoteBackslashes);
        if (to.isSet()) to.text = rewrite(to.text, match.brackets);
        return to;
    }

    std::string inCase(std::string text) const {
        if (case_ == Case::kAsIs) return text;
        for (char& c : text) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte < 0x80)
                c = static_cast<char>(case_ == Case::kLower ? std::tolower(byte) : std::toupper(byte));
        }
        return text;
    }

    std::optional<Slot> name_;
    Template value_;
    std::optional<PatternTemplate> match_;
    std::optional<Template> to_;
    std::optional<Template> else_;
    Case case_ = Case::kAsIs;
};

}  // namespace

std::unique_ptr<Check> makeSet(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<Set>(attributes);
}

}  // namespace zuksw
