#include "scanners/zuksw/index/name_index.h"

#include <algorithm>

namespace zuksw {
namespace {

constexpr std::size_t kLengthSlots = std::size_t{1} << 16U;
constexpr std::size_t kMaxEdge = 62;     // longer texts are cut
constexpr std::size_t kFewMatchers = 8;  // fewer are faster one by one

std::size_t keyOf(char a, char b, char c) {
    const std::uint32_t bytes = static_cast<std::uint32_t>(static_cast<unsigned char>(a)) |
                                static_cast<std::uint32_t>(static_cast<unsigned char>(b)) << 8U |
                                static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << 16U;
    return (bytes * 2654435761U) >> 16U;
}

}  // namespace

bool NameIndex::Matcher::matches(std::string_view name) const {
    if (!pattern) return glob.matches(name);
    const re2::RE2* engine = pattern->engine();
    return engine != nullptr && re2::RE2::FullMatch({name.data(), name.size()}, *engine);
}

void NameIndex::Edge::add(std::string_view text, std::uint32_t matcher) {
    text = text.substr(0, kMaxEdge);
    table.add(text, matcher);
    const Lengths bit = Lengths{1} << text.size();
    if (text.size() < 3) {
        brief[static_cast<unsigned char>(text[0])] |= bit;
        return;
    }
    if (lengths.empty()) lengths.resize(kLengthSlots);
    lengths[keyOf(text[0], text[1], text[2])] |= bit;
}

template <typename Visit>
void NameIndex::Edge::find(std::string_view name, bool backwards, Visit visit) const {
    const std::size_t size = name.size();
    const auto at = [&](std::size_t i) { return backwards ? name[size - 1 - i] : name[i]; };
    if (size == 0) return;
    Lengths wanted = brief[static_cast<unsigned char>(at(0))];
    if (size >= 3 && !lengths.empty()) wanted |= lengths[keyOf(at(0), at(1), at(2))];
    if (wanted == 0) return;
    std::array<char, kMaxEdge> text = {};
    ByteHash hash;
    for (std::size_t i = 0; i < std::min(size, kMaxEdge) && wanted >> (i + 1) != 0; ++i) {
        text[i] = at(i);
        hash.add(text[i]);
        if ((wanted >> (i + 1) & 1U) != 0) table.find({text.data(), i + 1}, hash.value(), visit);
    }
}

void NameIndex::add(Matcher matcher, std::string_view prefix, std::string_view suffix) {
    const auto index = static_cast<std::uint32_t>(matchers_.size());
    matchers_.push_back(std::move(matcher));
    if (!prefix.empty() && prefix.size() + 1 >= suffix.size()) {
        prefixes_.add(prefix, index);
    } else if (!suffix.empty()) {
        suffixes_.add(std::string(suffix.rbegin(), suffix.rend()), index);
    } else {
        rest_.push_back(index);
    }
}

void NameIndex::add(const NameGlob& glob, std::uint32_t number) {
    if (glob.isLiteral()) {
        exact_.add(glob.prefix(), number);
        return;
    }
    add({glob, nullptr, number}, glob.prefix(), glob.suffix());
}

void NameIndex::add(const std::shared_ptr<const Pattern>& wholeName, std::uint32_t number) {
    add({{}, wholeName, number}, literalPrefix(wholeName->text()), {});
}

void NameIndex::build(std::int64_t memory) {
    exact_.build();
    prefixes_.table.build();
    suffixes_.table.build();
    if (rest_.size() > kFewMatchers) buildSet(memory);
}

void NameIndex::buildSet(std::int64_t memory) {
    re2::RE2::Options options(re2::RE2::Latin1);
    options.set_log_errors(false);
    options.set_dot_nl(true);
    options.set_max_mem(memory);
    auto set = std::make_unique<re2::RE2::Set>(options, re2::RE2::ANCHOR_BOTH);
    std::string error;
    for (const std::uint32_t index : rest_) {
        const Matcher& matcher = matchers_[index];
        if (set->Add(matcher.pattern ? matcher.pattern->text() : matcher.glob.asPattern(), &error) < 0)
            return;
    }
    if (set->Compile()) set_ = std::move(set);
}

void NameIndex::findRest(std::string_view name, std::vector<std::uint32_t>* numbers) const {
    if (set_) {
        std::vector<int> found;
        re2::RE2::Set::ErrorInfo error = {};
        set_->Match({name.data(), name.size()}, &found, &error);
        // Out of memory looks like no match; then each is asked by itself.
        if (error.kind == re2::RE2::Set::kNoError) {
            for (const int i : found)
                numbers->push_back(matchers_[rest_[static_cast<std::size_t>(i)]].number);
            return;
        }
    }
    for (const std::uint32_t index : rest_) {
        if (matchers_[index].matches(name)) numbers->push_back(matchers_[index].number);
    }
}

void NameIndex::find(std::string_view name, std::vector<std::uint32_t>* numbers) const {
    if (!exact_.empty()) {
        ByteHash hash;
        for (const char c : name) hash.add(c);
        exact_.find(name, hash.value(), [&](std::uint32_t number) { numbers->push_back(number); });
    }
    const auto compare = [&](std::uint32_t index) {
        if (matchers_[index].matches(name)) numbers->push_back(matchers_[index].number);
    };
    prefixes_.find(name, false, compare);
    suffixes_.find(name, true, compare);
    if (!rest_.empty()) findRest(name, numbers);
}

std::string literalPrefix(const std::string& pattern) {
    std::string_view text = pattern;
    if (text.substr(0, 4) == "^(?:") text.remove_prefix(4);  // as wholePattern() writes it
    if (text.find('|') != text.npos) return {};
    std::string prefix;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool quoted = text[i] == '\\' && i + 1 < text.size() &&
                            std::string_view(".-+_[](){}*?^$/").find(text[i + 1]) != std::string_view::npos;
        if (quoted) ++i;
        if (!quoted && std::string_view("\\.[](){}*+?^$").find(text[i]) != std::string_view::npos) {
            if (std::string_view("*?{").find(text[i]) != std::string_view::npos && !prefix.empty())
                prefix.pop_back();
            break;
        }
        prefix += text[i];
    }
    return prefix;
}

}  // namespace zuksw
