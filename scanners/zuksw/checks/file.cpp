#include <algorithm>
#include <mutex>
#include <set>
#include <unordered_map>
#include <utility>

#include "scanners/zuksw/checks/file_restrictions.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

// Finds files by name and place. How they are found depends on what is given: near another file or by a path
// without "**", the directories named are listed; anything else is looked for in the one walk of the scan.
class File : public Check {
  public:
    explicit File(ConditionReader& attributes);

    Cost cost() const override { return restrictions_.readsContent() ? Cost::kHeader : Cost::kCandidates; }
    void demand(std::vector<FileQuery>* queries) const override {
        if (needsWalk_) queries->push_back(walkQuery());
    }
    bool beginsWithWalk() const override { return needsWalk_ && isFixed() && isPlain(); }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override;

  private:
    // The selection with every reference replaced, or why it cannot be.
    struct Selection {
        std::optional<Glob> name;
        std::optional<Glob> path;
        std::string under;
        bool isRelative = false;
        Text state = Text::of({});
        bool accepts(const std::string& path) const;
    };

    void readSelection(ConditionReader& attributes);
    void readTypes(ConditionReader& attributes);
    bool isFixed() const;
    bool cannotBeListed() const;
    FileQuery walkQuery() const;
    Selection select(const Row& row, const Context& context) const;
    FoundFiles listFiles(const Row& row, const Selection& selection, const Context& context) const;
    void tryFiles(const Row& row, const FoundFiles& found, const Selection* selection, const Context& context,
                  Rows* out) const;
    void tryFile(const Row& row, const std::shared_ptr<const DiskFile>& file, const Context& context,
                 std::set<std::pair<dev_t, ino_t>>* seen, Rows* out) const;

    std::optional<GlobTemplate> name_;
    std::optional<PatternTemplate> nameMatch_;
    std::optional<GlobTemplate> path_;
    std::optional<Template> under_;
    std::optional<Slot> near_;
    std::optional<Slot> as_;
    unsigned types_ = kRegular;
    FileRestrictions restrictions_;
    bool needsWalk_ = false;
    mutable std::once_flag once_;                 // for these two, which are the same for every row:
    mutable const FoundFiles* walked_ = nullptr;  // what the walk found
    mutable FoundFiles listed_;                   // or what was listed, where nothing refers to a row
};

File::File(ConditionReader& attributes) {
    readSelection(attributes);
    readTypes(attributes);
    restrictions_.read(attributes, types_);
    needsWalk_ = cannotBeListed();
    as_ = attributes.binds("as", Kind::kFile);
}

void File::readSelection(ConditionReader& attributes) {
    near_ = attributes.object("near", Kind::kFile);
    name_ = attributes.nameGlob("name");
    nameMatch_ = attributes.pattern("nameMatch", true);
    path_ = attributes.pathGlob("path", near_.has_value());
    under_ = attributes.text("under");
    const bool hasName = attributes.has("name");
    const bool hasPattern = attributes.has("nameMatch");
    if (hasName && hasPattern) attributes.report("'name' and 'nameMatch' exclude each other; keep one");
    if (near_ && !path_)
        attributes.reportLack("'near' needs a 'path' to say what to look for near that file; add it");
    if (!hasName && !hasPattern && !attributes.has("path")) {
        attributes.reportLack("it selects nothing; add 'name', 'nameMatch' or 'path'");
    }
    if (near_ && path_ && path_->text.isLiteral() && path_->text.literal()[0] == '/') {
        attributes.report("with 'near' the path is relative; remove the '/' it begins with");
    }
    if (under_ && under_->isLiteral() && under_->literal()[0] != '/') {
        attributes.report("'under' is an absolute directory; begin it with '/'");
    }
}

void File::readTypes(ConditionReader& attributes) {
    const std::size_t type = attributes.choice("type", {"regular", "directory", "symlink"}).value_or(0);
    constexpr unsigned kTypes[] = {kRegular, kDirectory, kSymlink};
    types_ = kTypes[type];
    if (!attributes.yesNo("link").value_or(false)) return;
    if (types_ != kRegular) attributes.report("link=\"yes\" is for regular files; remove it or 'type'");
    types_ = kRegular | kSymlink;
}

bool File::isFixed() const {
    return (!name_ || name_->fixed) && (!nameMatch_ || nameMatch_->fixed) && (!path_ || path_->fixed) &&
           (!under_ || under_->isLiteral());
}

bool File::cannotBeListed() const {
    if (near_) return false;
    if (!path_) return true;
    if (!path_->fixed) return path_->pattern.find("**") != std::string::npos;
    const auto& alternatives = path_->fixed->alternatives();
    return std::any_of(alternatives.begin(), alternatives.end(), hasAnyDirectories);
}

// What the walk must keep. Where a reference is still open, more than is wanted.
FileQuery File::walkQuery() const {
    FileQuery query;
    std::string error;
    query.types = types_;
    if (path_ && path_->fixed) query.path = path_->fixed;
    if (under_ && under_->isLiteral() && under_->literal() != "/") query.under = under_->literal();
    while (!query.under.empty() && query.under.back() == '/') query.under.pop_back();
    const auto addNames = [&](const Glob& glob) {
        for (const GlobSteps& steps : glob.alternatives()) query.names.push_back(steps.back().name);
    };
    if (name_) {
        addNames(name_->fixed ? *name_->fixed : *Glob::parseName(name_->pattern, &error));
    } else if (nameMatch_ && nameMatch_->fixed) {
        query.pattern = nameMatch_->fixed;
    } else if (query.path && !nameMatch_) {
        addNames(*query.path);
    } else {
        addNames(*Glob::parseName("*", &error));
    }
    query.key.reserve(64);
    query.key.append(1, static_cast<char>('0' + types_)).append(query.pattern ? "m" : "n");
    if (query.pattern) query.key += query.pattern->text();
    query.key += '\n';
    if (name_) query.key += name_->pattern;
    query.key += '\n';
    if (query.path) query.key += path_->pattern;
    query.key.append("\n").append(query.under);
    return query;
}

// `path` is left out where it is relative to another file: then the files were listed by it.
bool File::Selection::accepts(const std::string& file) const {
    if (name && !name->matches(nameOf(file))) return false;
    if (!under.empty() && (!isAtOrBelow(file, under) || file.size() == under.size())) return false;
    return isRelative || !path || path->matches(std::string_view(file).substr(1));
}

File::Selection File::select(const Row& row, const Context& context) const {
    Selection selection;
    selection.isRelative = near_.has_value();
    const auto resolve = [&](const GlobTemplate& glob, bool name) -> std::optional<Glob> {
        if (glob.fixed) return glob.fixed;
        const Text text = expand(glob.text, row, context, quoteGlob);
        if (!text.isSet()) selection.state = text;
        std::string error;
        std::optional<Glob> parsed =
            name ? Glob::parseName(text.text, &error) : Glob::parsePath(text.text, &error);
        // A value that makes no glob, such as a name with a '/' in it, matches nothing.
        if (!parsed && selection.state.isSet()) selection.state = {};
        return parsed;
    };
    if (name_) selection.name = resolve(*name_, true);
    if (path_) selection.path = resolve(*path_, false);
    if (under_) {
        const Text under = expand(*under_, row, context);
        if (!under.isSet()) selection.state = under;
        selection.under = under.text;
        while (!selection.under.empty() && selection.under.back() == '/') selection.under.pop_back();
    }
    return selection;
}

FoundFiles File::listFiles(const Row& row, const Selection& selection, const Context& context) const {
    FileQuery query;
    query.path = selection.path;
    query.types = types_;
    std::string base;
    if (near_) {
        const auto* file = dynamic_cast<const DiskFile*>(row.at(*near_).object.get());
        if (file == nullptr) return {};
        base = directoryOf(file->path());
        if (base == "/") base.clear();
    }
    return context.machine.files.listed(query, base);
}

void File::tryFile(const Row& row, const std::shared_ptr<const DiskFile>& file, const Context& context,
                   std::set<std::pair<dev_t, ino_t>>* seen, Rows* out) const {
    const std::pair<dev_t, ino_t> identity(file->facts().st_dev, file->facts().st_ino);
    if (seen->count(identity) != 0) return;
    const std::string& foundBy = file->link().empty() ? file->path() : file->link();
    Row found = row;
    if (nameMatch_) {
        const MatchResult match = matchText(*nameMatch_, nameOf(foundBy), found, context);
        if (!match.text.isSet()) {
            if (match.text.state == Text::State::kUnknown) undecided(row, match.text.causes, out);
            return;
        }
        if (!bindCaptures(*nameMatch_, match.captures, context, &found)) return;
    }
    if (as_ && !found.bind(*as_, std::static_pointer_cast<const Object>(file))) return;
    const Answer answer = restrictions_.accept(*file, found, context);
    if (answer.isNo()) return;
    if (answer.causes != 0) {
        // The file is known, only whether it is one that is wanted is not; another path may tell.
        found.undecide(answer.causes);
        out->push_back(std::move(found));
        return;
    }
    seen->insert(identity);
    holds(std::move(found),
          {{"kind", "file"}, {"path", file->path()}, {"size", std::to_string(file->size())}}, out);
}

void File::evaluate(const Row& row, const Context& context, Rows* out) const {
    if (near_ && row.at(*near_).state != Text::State::kSet) {
        if (row.at(*near_).state == Text::State::kUnknown) undecided(row, row.at(*near_).causes, out);
        return;
    }
    if (needsWalk_) {
        std::call_once(once_, [&] { walked_ = &context.machine.files.walked(walkQuery()); });
        // What the walk was asked for need not be asked again.
        if (isFixed()) return tryFiles(row, *walked_, nullptr, context, out);
    }
    const Selection selection = select(row, context);
    if (!selection.state.isSet()) {
        if (selection.state.state == Text::State::kUnknown) undecided(row, selection.state.causes, out);
        return;
    }
    if (needsWalk_) return tryFiles(row, *walked_, &selection, context, out);
    if (near_ || !isFixed()) {
        return tryFiles(row, listFiles(row, selection, context), &selection, context, out);
    }
    std::call_once(once_, [&] { listed_ = listFiles(row, selection, context); });
    tryFiles(row, listed_, &selection, context, out);
}

void File::tryFiles(const Row& row, const FoundFiles& found, const Selection* selection,
                    const Context& context, Rows* out) const {
    std::set<std::pair<dev_t, ino_t>> seen;
    for (const auto& file : found.files) {
        if (context.machine.budget.isSpent()) return undecided(row, toCauses(Cause::kTimeBudget), out);
        const std::string& path = file->link().empty() ? file->path() : file->link();
        if (selection == nullptr || selection->accepts(path)) tryFile(row, file, context, &seen, out);
        if (context.tooMany(*out)) return limitRows(row, context, out);
    }
    if (found.causes != 0) undecided(row, found.causes, out);
}

}  // namespace

std::unique_ptr<Check> makeFile(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<File>(attributes);
}

}  // namespace zuksw
