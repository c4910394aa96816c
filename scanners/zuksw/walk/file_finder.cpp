#include "scanners/zuksw/walk/file_finder.h"

#include <algorithm>
#include <cerrno>

#include "scanners/zuksw/walk/lister.h"

namespace zuksw {

void FileFinder::walk(QuerySet queries, unsigned threads, std::int64_t memory) {
    queries_ = std::move(queries);
    if (queries_.empty()) return;
    queries_.build(memory);
    Walker walker(places_, queries_);
    walker.run(threads);
    entries_ = walker.entries();
    for (Candidate& candidate : walker.takeCandidates())
        answers_[candidate.query].candidates.push_back(std::move(candidate.path));
    nothing_ = std::vector<Answer>(queries_.places().size());
}

// The causes that make an area unknown. Running out of time says nothing about what would have been found.
Causes FileFinder::countedGaps() const {
    return places_.configuration.search.incompleteIsUnknown ? ~Causes{0} : toCauses(Cause::kTimeBudget);
}

Causes FileFinder::gapsOf(const FilePlace& place) const {
    const Causes counted = countedGaps();
    Causes causes = 0;
    for (const Gap& gap : places_.gaps.all()) {
        if ((gap.causes & counted & ~causes) != 0 && place.reachesBelow(gap.directory))
            causes |= gap.causes & counted;
    }
    return causes;
}

// Adds what stands at the path, or what it leads to when links count, if its type is wanted.
void FileFinder::add(const std::string& path, unsigned types, FoundFiles* found) const {
    std::optional<struct stat> facts = places_.tree.stat(path);
    std::string real = path;
    std::string link;
    const bool follow = (types & kRegular) != 0 && (types & kSymlink) != 0;
    if (follow && places_.configuration.search.linksToFiles &&
        (!facts ? errno == ELOOP : S_ISLNK(facts->st_mode))) {
        const std::optional<std::string> target = places_.tree.resolve(
            path, [this](std::string_view directory) { return places_.territory.isPassable(directory); });
        facts = target ? places_.tree.stat(*target) : std::nullopt;
        if (target) real = *target;
        if (places_.territory.isExcluded(real)) return;
        link = path;
    }
    if (!facts) {
        if (errno == ENOENT || errno == ENOTDIR || errno == ELOOP) return;  // gone
        places_.events.add(EventCode::kUnreadable, {}, "files that cannot be looked at", path);
        if (places_.configuration.search.incompleteIsUnknown) found->causes |= toCauses(Cause::kUnreadable);
        return;
    }
    const bool wanted = (S_ISREG(facts->st_mode) && (types & kRegular) != 0) ||
                        (S_ISDIR(facts->st_mode) && (types & kDirectory) != 0) ||
                        (S_ISLNK(facts->st_mode) && types == kSymlink);
    if (wanted)
        found->files.push_back(std::make_shared<const DiskFile>(std::move(real), *facts, std::move(link)));
}

const FoundFiles& FileFinder::answerTo(std::uint32_t number) {
    const std::uint32_t placeNumber = queries_.placeOf(number);
    const auto found = answers_.find(number);
    Answer& answer = found == answers_.end() ? nothing_[placeNumber] : found->second;
    std::call_once(answer.once, [&] {
        const FilePlace& place = queries_.places()[placeNumber];
        for (const std::string& path : answer.candidates) add(path, place.types, &answer.found);
        answer.candidates = {};
        answer.found.causes |= gapsOf(place);
    });
    return answer.found;
}

const FoundFiles& FileFinder::walked(const FileQuery& query) {
    static const FoundFiles kNone;
    const std::optional<std::uint32_t> number = queries_.find(query);
    return number ? answerTo(*number) : kNone;
}

bool FileFinder::foundNothing(std::uint32_t number) {
    return answers_.count(number) == 0 && answerTo(number).causes == 0;
}

FoundFiles FileFinder::listed(const FileQuery& query, const std::string& base) const {
    FoundFiles found;
    Lister lister(places_, &listings_);
    std::vector<std::string> paths;
    for (const GlobSteps& steps : query.path->alternatives()) {
        std::vector<std::string> some = lister.list(base, steps);
        paths.insert(paths.end(), some.begin(), some.end());
    }
    std::sort(paths.begin(), paths.end());
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    for (const std::string& path : paths) add(path, query.types, &found);
    found.causes |= lister.causes() & countedGaps();
    return found;
}

}  // namespace zuksw
