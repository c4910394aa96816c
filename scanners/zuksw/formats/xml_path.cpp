#include "scanners/zuksw/formats/xml_path.h"

#include <algorithm>

namespace zuksw {

namespace {

// The end of a step: the next slash that is not inside quotes.
std::size_t endOfStep(std::string_view path) {
    char quote = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char c = path[i];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '\'' || c == '"') {
            quote = c;
        } else if (c == '/') {
            return i;
        }
    }
    return path.size();
}

bool isName(std::string_view text) {
    return !text.empty() && text.find_first_of("/[]@='\"* \t:") == std::string_view::npos;
}

// "@x='y'" or with double quotes.
bool parseCondition(std::string_view text, std::pair<std::string, std::string>* condition) {
    const auto equals = text.find('=');
    if (text.empty() || text.front() != '@' || equals == std::string_view::npos) return false;
    const std::string_view name = text.substr(1, equals - 1);
    const std::string_view value = text.substr(equals + 1);
    const bool quoted = value.size() >= 2 && (value.front() == '\'' || value.front() == '"') &&
                        value.find(value.front(), 1) == value.size() - 1;
    if (!isName(name) || !quoted) return false;
    *condition = {std::string(name), std::string(value.substr(1, value.size() - 2))};
    return true;
}

}  // namespace

std::string XmlPath::problem(std::string_view path) {
    return XmlPath().parse(path);
}

XmlPath::XmlPath(std::string_view path) {
    parse(path);
}

std::string XmlPath::parse(std::string_view path) {
    if (path.empty() || path.front() != '/') return "an XML path begins with a slash";
    while (!path.empty()) {
        path.remove_prefix(1);
        Step step;
        step.anyDepth = !path.empty() && path.front() == '/';
        if (step.anyDepth) path.remove_prefix(1);
        const std::string_view text = path.substr(0, endOfStep(path));
        path.remove_prefix(text.size());
        if (!text.empty() && text.front() == '@') {
            if (!path.empty() || step.anyDepth || steps_.empty())
                return "@ stands only in the last step, after an element";
            if (!isName(text.substr(1))) return "after @ comes the name of an attribute";
            attribute_ = text.substr(1);
            return "";
        }
        if (std::string wrong = parseStep(text, &step); !wrong.empty()) return wrong;
        steps_.push_back(std::move(step));
        if (steps_.size() > kMaxSteps) return "the path is longer than 63 steps";
    }
    return "";
}

std::string XmlPath::parseStep(std::string_view text, Step* step) {
    const std::string_view name = text.substr(0, text.find('['));
    text.remove_prefix(name.size());
    if (name != "*" && !isName(name)) return "a step is an element's name without prefix, or *";
    step->name = name;
    while (!text.empty()) {
        const auto end = text.find(']');
        std::pair<std::string, std::string> condition;
        if (text.front() != '[' || end == std::string_view::npos ||
            !parseCondition(text.substr(1, end - 1), &condition)) {
            return "a condition is written [@name='value']";
        }
        step->conditions.push_back(std::move(condition));
        text.remove_prefix(end + 1);
    }
    return "";
}

bool XmlPath::fits(const Step& step, std::string_view name, const Attributes& attributes) {
    if (step.name != "*" && step.name != name) return false;
    return std::all_of(step.conditions.begin(), step.conditions.end(), [&](const auto& condition) {
        return std::any_of(attributes.begin(), attributes.end(), [&](const auto& attribute) {
            return attribute.first == condition.first && attribute.second == condition.second;
        });
    });
}

XmlPath::Progress XmlPath::enter(Progress parent, std::string_view name, const Attributes& attributes,
                                 bool* wanted) const {
    Progress progress = 0;
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        if ((parent >> i & 1U) == 0) continue;
        if (steps_[i].anyDepth) progress |= Progress(1) << i;
        if (fits(steps_[i], name, attributes)) progress |= Progress(1) << (i + 1);
    }
    *wanted = (progress >> steps_.size() & 1U) != 0;
    return progress;
}

}  // namespace zuksw
