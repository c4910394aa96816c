#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "scanners/zuksw/checks/literal_pattern.h"
#include "scanners/zuksw/checks/object_of.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/content_search.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"
#include "scanners/zuksw/formats/elf.h"

namespace zuksw {
namespace {

enum class Take { kFirst, kLast, kAll, kOnly };
constexpr std::size_t kMaxSets = 16;

// What a search brought: the different sets of captures, each with the place of its first match.
struct Hits {
    std::vector<std::pair<std::uint64_t, Captures>> sets;
    bool ambiguous = false;
};

// Looks for a pattern, a text or bytes in a file or a member of an archive.
class Content : public Check {
  public:
    explicit Content(ConditionReader& attributes);

    Cost cost() const override { return head_ && *head_ <= 65536 ? Cost::kHeader : Cost::kContent; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override;

  private:
    void readSearch(ConditionReader& attributes);
    std::shared_ptr<const Pattern> resolve(const Row& row, const Context& context, Text* state) const;
    Answer part(const Contents& contents, const Row& row, const Context& context, Range* range) const;
    bool collect(const ContentMatch& match, const Pattern& pattern, Hits* hits) const;
    void searchIn(const FileObject& file, const Pattern& pattern, const Row& row, const Context& context,
                  Rows* out) const;
    void report(const FileObject& file, const Hits& hits, const Row& row, const Context& context,
                Rows* out) const;

    std::optional<Slot> of_;
    std::optional<PatternTemplate> match_;
    std::optional<Template> text_;
    std::string hex_;  // as a pattern
    LiteralForm form_;
    Take take_ = Take::kFirst;
    std::optional<std::uint64_t> head_;
    std::optional<std::uint64_t> tail_;
    std::optional<Template> section_;
};

// Patterns over the contents of files are where a scan can lose its time.
void advise(const std::string& pattern, ConditionReader& attributes) {
    const std::size_t offset = attributes.element().offset;
    if (!hasLiteralRun(pattern)) {
        attributes.scope().advise(offset,
                                  "<Content>: the pattern has no 3 plain bytes in a row; it will be slow");
    }
    if (largestRepetition(pattern) > 100) {
        attributes.scope().advise(offset,
                                  "<Content>: a repetition above 100 makes the pattern slow; repeat less");
    }
}

Content::Content(ConditionReader& attributes) {
    attributes.require("of");
    of_ = attributes.object("of", Kind::kFile);
    readSearch(attributes);
    take_ = static_cast<Take>(attributes.choice("take", {"first", "last", "all", "only"}).value_or(0));
    head_ = attributes.number("head");
    tail_ = attributes.number("tail");
    section_ = attributes.text("section");
    if ((head_ ? 1 : 0) + (tail_ ? 1 : 0) + (section_ ? 1 : 0) > 1) {
        attributes.report("'head', 'tail' and 'section' exclude each other; keep one");
    }
}

void Content::readSearch(ConditionReader& attributes) {
    const int searches = (attributes.has("match") ? 1 : 0) + (attributes.has("text") ? 1 : 0) +
                         (attributes.has("hex") ? 1 : 0);
    if (searches != 1) attributes.reportLack("it needs exactly one of 'match', 'text' and 'hex'");
    match_ = attributes.pattern("match");
    if (match_) advise(match_->text.withStandIn("x"), attributes);
    text_ = attributes.text("text");
    const auto hex = attributes.raw("hex");
    if (hex) {
        const std::optional<std::string> pattern = hexPattern(*hex);
        if (!pattern)
            attributes.report("'hex' is pairs of hex digits, or ?? for any byte, such as \"7f 45 ?? 46\"");
        hex_ = pattern.value_or("");
    }
    form_.ignoreCase = attributes.yesNo("nocase").value_or(false);
    form_.encoding = static_cast<LiteralForm::Encoding>(
        attributes.choice("encoding", {"bytes", "utf16le", "utf16be"}).value_or(0));
    if (!text_ && (attributes.has("nocase") || attributes.has("encoding"))) {
        attributes.report("'nocase' and 'encoding' belong to 'text'; in a pattern write (?i)");
    }
    if (text_ && text_->isLiteral() && text_->literal().empty())
        attributes.report("'text' is empty; say what to look for");
}

std::shared_ptr<const Pattern> Content::resolve(const Row& row, const Context& context, Text* state) const {
    if (match_) return resolvePattern(*match_, row, context, state);
    std::string pattern = hex_;
    if (text_) {
        *state = expand(*text_, row, context);
        if (!state->isSet()) return nullptr;
        pattern = literalPattern(state->text, form_);
    }
    std::string error;
    return context.machine.patterns.get(pattern, &error);
}

// Which bytes to search. No: there is no such section.
Answer Content::part(const Contents& contents, const Row& row, const Context& context, Range* range) const {
    const std::uint64_t size = contents.size();
    *range = {0, size};
    if (head_) range->end = std::min(size, *head_);
    if (tail_) range->begin = size - std::min(size, *tail_);
    if (!section_) return Answer::yes();
    const Text name = expand(*section_, row, context);
    if (!name.isSet()) return Answer::missing(name);
    const std::optional<Elf> elf = Elf::parse(contents.bytes());
    const auto bytes = elf ? elf->sectionBytes(name.text) : std::nullopt;
    if (!bytes) return Answer::no();
    range->begin = static_cast<std::uint64_t>(bytes->data() - contents.bytes().data());
    range->end = range->begin + bytes->size();
    return Answer::yes();
}

// Takes a match into account; false when there is nothing more to look for.
bool Content::collect(const ContentMatch& match, const Pattern& pattern, Hits* hits) const {
    Captures captures;
    for (const PatternGroup& group : pattern.groups()) {
        const re2::StringPiece& piece = match.brackets[static_cast<std::size_t>(group.index)];
        captures.push_back(piece.data() == nullptr
                               ? std::nullopt
                               : std::make_optional(std::string(piece.data(), piece.size())));
    }
    auto& sets = hits->sets;
    if (take_ == Take::kLast) sets.clear();
    const bool known =
        std::any_of(sets.begin(), sets.end(), [&](const auto& set) { return set.second == captures; });
    if (!known) sets.emplace_back(match.offset, std::move(captures));
    hits->ambiguous = take_ == Take::kOnly && sets.size() > 1;
    if (take_ == Take::kFirst || hits->ambiguous) return false;
    return take_ != Take::kAll || sets.size() < kMaxSets;
}

void Content::searchIn(const FileObject& file, const Pattern& pattern, const Row& row, const Context& context,
                       Rows* out) const {
    Machine& machine = context.machine;
    if (!head_ && !tail_ && file.size() > machine.configuration.content.maxFileSize) {
        machine.events.add(EventCode::kTooLarge, {}, "larger than content/MaxFileSize; not searched",
                           file.path());
        return undecided(row, toCauses(Cause::kTooLarge), out);
    }
    const Opened opened = file.open(machine);
    if (!opened.contents) {
        if (opened.causes != 0) undecided(row, opened.causes, out);
        return;
    }
    Range range;
    const Answer where = part(*opened.contents, row, context, &range);
    if (where.causes != 0) return undecided(row, where.causes, out);
    const re2::RE2* engine = pattern.engine();
    if (where.isNo() || engine == nullptr) return;
    Hits hits;
    const auto visit = [&](const ContentMatch& match) {
        return collect({match.offset + range.begin, match.brackets}, pattern, &hits);
    };
    const Causes stopped = searchContent(*opened.contents, range, *engine, machine, visit);
    if (stopped != 0 && (hits.sets.empty() || take_ != Take::kAll)) return undecided(row, stopped, out);
    if (hits.ambiguous) {
        context.event(EventCode::kAmbiguous, "take=\"only\": more than one different match", file.path());
        return undecided(row, toCauses(Cause::kAmbiguous), out);
    }
    report(file, hits, row, context, out);
    if (stopped != 0) undecided(row, stopped, out);
}

void Content::report(const FileObject& file, const Hits& hits, const Row& row, const Context& context,
                     Rows* out) const {
    for (const auto& [offset, captures] : hits.sets) {
        Row found = row;
        if (match_ && !bindCaptures(*match_, captures, context, &found)) continue;
        holds(std::move(found),
              {{"kind", "file"},
               {"path", file.path()},
               {"size", std::to_string(file.size())},
               {"offset", std::to_string(offset)}},
              out);
    }
}

void Content::evaluate(const Row& row, const Context& context, Rows* out) const {
    const ObjectOf<FileObject> object(row.at(*of_));
    if (object.causes != 0) undecided(row, object.causes, out);
    if (!object) return;
    Text state;
    const auto pattern = resolve(row, context, &state);
    if (pattern) return searchIn(*object, *pattern, row, context, out);
    if (state.state == Text::State::kUnknown) undecided(row, state.causes, out);
}

}  // namespace

std::unique_ptr<Check> makeContent(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<Content>(attributes);
}

}  // namespace zuksw
