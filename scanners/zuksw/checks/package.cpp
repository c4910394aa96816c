#include <algorithm>
#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"

namespace zuksw {
namespace {

enum class Wanted { kPresent, kInstalled, kAny };

// Installed packages, each a row.
class PackageCheck : public Check {
  public:
    explicit PackageCheck(ConditionReader& attributes);

    Cost cost() const override { return Cost::kFact; }
    void demand(std::vector<FileQuery>* queries) const override;

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override;

  private:
    void readManagers(ConditionReader& attributes);
    void addManager(std::string_view manager);
    bool isWantedState(PackageState state) const;
    void tryPackage(const std::shared_ptr<const PackageObject>& package, const std::optional<Glob>& name,
                    const Row& row, const Context& context, Rows* out) const;
    Answer accept(const PackageObject& package, const Context& context, Row* row) const;

    std::vector<std::string_view> managers_;
    std::optional<GlobTemplate> name_;
    std::optional<PatternTemplate> nameMatch_;
    std::optional<GlobTemplate> source_;
    std::optional<GlobTemplate> arch_;
    Wanted state_ = Wanted::kPresent;
    std::optional<Slot> as_;
    Comparison comparison_;
};

PackageCheck::PackageCheck(ConditionReader& attributes) {
    readManagers(attributes);
    name_ = attributes.pathGlob("name", true);
    nameMatch_ = attributes.pattern("nameMatch", true);
    source_ = attributes.pathGlob("source", true);
    arch_ = attributes.pathGlob("arch", true);
    state_ = static_cast<Wanted>(attributes.choice("state", {"present", "installed", "any"}).value_or(0));
    as_ = attributes.binds("as", Kind::kPackage);
    comparison_ = attributes.comparison();
    if (name_ && nameMatch_) attributes.report("'name' and 'nameMatch' exclude each other; keep one");
}

void PackageCheck::readManagers(ConditionReader& attributes) {
    std::string_view list = attributes.raw("manager").value_or("any");
    if (list.find_first_not_of(", ") == list.npos)
        attributes.report("'manager' is empty; name one or remove it");
    const auto& known = Packages::managers();
    while (!list.empty()) {
        const std::size_t end = list.find_first_of(", ");
        const std::string_view word = list.substr(0, end);
        list.remove_prefix(end == list.npos ? list.size() : end + 1);
        if (word.empty()) continue;
        const auto found = std::find(known.begin(), known.end(), word);
        if (word == "any") {
            for (const std::string_view manager : Packages::machineManagers()) addManager(manager);
        } else if (found != known.end()) {
            addManager(*found);
        } else {
            attributes.report("'" + std::string(word) +
                              "' is no package manager; write any or some of: dpkg, opkg, "
                              "rpm, apk, pacman, flatpak, snap, pip, npm, gem, jar");
        }
    }
}

// One that is named twice has its packages once.
void PackageCheck::addManager(std::string_view manager) {
    if (std::find(managers_.begin(), managers_.end(), manager) == managers_.end())
        managers_.push_back(manager);
}

void PackageCheck::demand(std::vector<FileQuery>* queries) const {
    for (const std::string_view manager : managers_) Packages::demand(manager, queries);
}

bool PackageCheck::isWantedState(PackageState state) const {
    if (state_ == Wanted::kAny) return true;
    return state_ == Wanted::kInstalled ? state == PackageState::Installed : filesArePresent(state);
}

Answer PackageCheck::accept(const PackageObject& object, const Context& context, Row* row) const {
    const Package& package = object.package();
    Causes causes = 0;
    const auto add = [&causes](const Answer& answer) {
        causes |= answer.causes;
        return !answer.isNo();
    };
    if (nameMatch_) {
        const MatchResult match = matchText(*nameMatch_, package.name, *row, context);
        if (!match.text.isSet() && match.text.causes == 0) return Answer::no();
        causes |= match.text.causes;
        if (!bindCaptures(*nameMatch_, match.captures, context, row)) return Answer::no();
    }
    const std::string& source = package.source.empty() ? package.name : package.source;
    if (source_ && !add(acceptGlob(*source_, source, *row, context))) return Answer::no();
    if (arch_ && !add(acceptGlob(*arch_, package.architecture, *row, context))) return Answer::no();
    const Scheme scheme = schemeOfManager(package.manager);
    if (!add(compare(comparison_, package.version, scheme, context, row))) return Answer::no();
    return Answer::unknown(causes);
}

void PackageCheck::tryPackage(const std::shared_ptr<const PackageObject>& object,
                              const std::optional<Glob>& name, const Row& row, const Context& context,
                              Rows* out) const {
    const Package& package = object->package();
    if (!isWantedState(package.state) || (name && !name->matches(package.name))) return;
    Row found = row;
    if (as_ && !found.bind(*as_, std::static_pointer_cast<const Object>(object))) return;
    const Answer answer = accept(*object, context, &found);
    if (answer.isNo()) return;
    if (answer.causes != 0) return undecided(found, answer.causes, out);
    holds(std::move(found),
          {{"kind", "package"},
           {"manager", std::string(package.manager)},
           {"name", package.name},
           {"version", package.version},
           {"arch", package.architecture}},
          out);
}

void PackageCheck::evaluate(const Row& row, const Context& context, Rows* out) const {
    std::optional<Glob> name;
    if (name_) {
        name = name_->fixed;
        std::string error;
        const Text text = name ? Text::of({}) : expand(name_->text, row, context, quoteGlob);
        if (text.state == Text::State::kUnknown) undecided(row, text.causes, out);
        if (text.isSet() && !name) name = Glob::parsePath(text.text, &error);
        if (!name) return;
    }
    const bool literal = name && name->alternatives().size() == 1 &&
                         isLiteral(name->alternatives().front()) && name->alternatives().front().size() == 1;
    for (const std::string_view manager : managers_) {
        const ManagerPackages& packages = context.machine.packages.of(manager, context.machine);
        if (literal) {
            const auto same = packages.byName.find(name->alternatives().front().front().name.prefix());
            if (same != packages.byName.end()) {
                for (const std::size_t i : same->second) tryPackage(packages.all[i], name, row, context, out);
            }
        } else {
            for (const auto& package : packages.all) tryPackage(package, name, row, context, out);
        }
        if (packages.causes != 0) undecided(row, packages.causes, out);
    }
    limitRows(row, context, out);
}

}  // namespace

std::unique_ptr<Check> makePackage(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<PackageCheck>(attributes);
}

}  // namespace zuksw
