#include "scanners/zuksw/language/pattern.h"

#include <optional>
#include <utility>

#include "scanners/zuksw/language/pattern_explanation.h"

namespace zuksw {
namespace {

std::unique_ptr<re2::RE2> compile(const std::string& text, std::int64_t memory) {
    re2::RE2::Options options(re2::RE2::Latin1);
    options.set_log_errors(false);
    options.set_max_mem(memory);
    return std::make_unique<re2::RE2>(text, options);
}

std::vector<PatternGroup> groupsOf(const re2::RE2& engine) {
    std::vector<PatternGroup> groups;
    for (const auto& [index, name] : engine.CapturingGroupNames()) groups.push_back({index, name});
    return groups;
}

}  // namespace

const re2::RE2* Pattern::engine() const {
    std::call_once(once_, [this] { engine_ = compile(text_, memory_); });
    return engine_->ok() ? engine_.get() : nullptr;
}

std::shared_ptr<const Pattern> PatternStore::make(const std::string& text, std::string* error) const {
    std::optional<std::vector<PatternGroup>> groups = plainPatternGroups(text);
    if (!groups) {
        const auto engine = compile(text, memory_);
        if (!engine->ok()) {
            *error = explainPattern(*engine);
            return nullptr;
        }
        groups = groupsOf(*engine);
    }
    return std::make_shared<const Pattern>(text, memory_, *std::move(groups));
}

std::shared_ptr<const Pattern> PatternStore::get(const std::string& text, std::string* error) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const auto found = patterns_.find(text);
        if (found != patterns_.end()) return found->second;
    }
    std::shared_ptr<const Pattern> pattern = make(text, error);
    if (!pattern) return nullptr;
    const std::lock_guard<std::mutex> lock(mutex_);
    return patterns_.emplace(text, std::move(pattern)).first->second;
}

std::string quotePattern(std::string_view text) {
    return re2::RE2::QuoteMeta({text.data(), text.size()});
}

std::string wholePattern(const std::string& text) {
    return "^(?:" + text + ")$";
}

}  // namespace zuksw
