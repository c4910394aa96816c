#include "scanners/zuksw/language/path_glob.h"

#include <algorithm>

namespace zuksw {
namespace {

// Takes the first component off a relative path.
std::string_view nextComponent(std::string_view* path) {
    const std::size_t slash = path->find('/');
    const std::string_view component = path->substr(0, slash);
    path->remove_prefix(slash == path->npos ? path->size() : slash + 1);
    return component;
}

std::vector<std::string_view> splitPath(std::string_view path) {
    std::vector<std::string_view> components;
    while (!path.empty()) components.push_back(nextComponent(&path));
    return components;
}

// A slash inside a class ("[a/b]") is not a separator of anything; such a class cannot match one either.
std::optional<GlobSteps> parseSteps(std::string_view text, std::string* error) {
    GlobSteps steps;
    while (!text.empty()) {
        const std::string_view component = nextComponent(&text);
        if (component.empty() || component == ".") continue;
        if (component == "**") {
            if (steps.empty() || !steps.back().anyDirectories) steps.push_back({true});
            continue;
        }
        std::optional<NameGlob> name = NameGlob::parse(component, error);
        if (!name) return std::nullopt;
        steps.push_back({false, *std::move(name)});
    }
    if (steps.empty()) {
        *error = "it is empty";
        return std::nullopt;
    }
    // "a/**" is everything below a, at any depth.
    if (steps.back().anyDirectories) steps.push_back({false, *NameGlob::parse("*", error)});
    return steps;
}

// Matches components against steps; only the last "**" need be able to take more. With `prefix` it is enough
// that the components lead to a place from which the steps go on.
bool matchSteps(const GlobSteps& steps, const std::vector<std::string_view>& components, bool prefix) {
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t step = 0;
    std::size_t at = 0;
    std::size_t any = kNone;
    std::size_t anyEnd = 0;
    while (at < components.size()) {
        if (step < steps.size() && steps[step].anyDirectories) {
            if (prefix) return true;
            any = step++;
            anyEnd = at;
        } else if (step < steps.size() && steps[step].name.matches(components[at])) {
            ++step;
            ++at;
        } else if (any != kNone) {
            step = any + 1;
            at = ++anyEnd;
        } else {
            return false;
        }
    }
    return prefix ? step < steps.size() : step == steps.size();
}

}  // namespace

std::optional<Glob> Glob::parseName(std::string_view text, std::string* error) {
    Glob glob;
    const auto add = [&](std::string_view alternative) {
        if (alternative.find('/') != alternative.npos) {
            *error = "a name holds no '/'; use 'path' for directories";
            return false;
        }
        std::optional<NameGlob> name = NameGlob::parse(alternative, error);
        if (!name) return false;
        glob.alternatives_.emplace_back().push_back({false, *std::move(name)});
        return true;
    };
    bool parsed = false;
    if (text.find('{') == text.npos) {
        parsed = add(text);
    } else {
        const auto texts = expandBraces(text, error);
        parsed = texts && std::all_of(texts->begin(), texts->end(), add);
    }
    if (!parsed) return std::nullopt;
    return glob;
}

std::optional<Glob> Glob::parsePath(std::string_view text, std::string* error) {
    const auto texts = expandBraces(text, error);
    if (!texts) return std::nullopt;
    Glob glob;
    for (const std::string& alternative : *texts) {
        std::optional<GlobSteps> steps = parseSteps(alternative, error);
        if (!steps) return std::nullopt;
        glob.alternatives_.push_back(*std::move(steps));
    }
    return glob;
}

bool Glob::matches(std::string_view path) const {
    const std::vector<std::string_view> components = splitPath(path);
    return std::any_of(alternatives_.begin(), alternatives_.end(),
                       [&](const GlobSteps& steps) { return matchSteps(steps, components, false); });
}

bool Glob::reachesBelow(std::string_view path) const {
    const std::vector<std::string_view> components = splitPath(path);
    return std::any_of(alternatives_.begin(), alternatives_.end(),
                       [&](const GlobSteps& steps) { return matchSteps(steps, components, true); });
}

bool isLiteral(const GlobSteps& steps) {
    return std::all_of(steps.begin(), steps.end(),
                       [](const GlobStep& step) { return !step.anyDirectories && step.name.isLiteral(); });
}

bool hasAnyDirectories(const GlobSteps& steps) {
    return std::any_of(steps.begin(), steps.end(), [](const GlobStep& step) { return step.anyDirectories; });
}

std::string literalDirectory(const GlobSteps& steps) {
    std::string directory;
    for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        if (steps[i].anyDirectories || !steps[i].name.isLiteral()) break;
        if (!directory.empty()) directory += '/';
        directory += steps[i].name.prefix();
    }
    return directory;
}

}  // namespace zuksw
