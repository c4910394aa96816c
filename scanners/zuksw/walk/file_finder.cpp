#include "scanners/zuksw/walk/file_finder.h"

#include <algorithm>
#include <cerrno>

#include "scanners/zuksw/walk/lister.h"

namespace zuksw {

void FileFinder::walk(unsigned threads, std::int64_t memory) {
    if (queries_.empty()) return;
    queries_.build(memory);
    Walker walker(places_, queries_);
    walker.run(threads);
    entries_ = walker.entries();
    for (std::vector<Candidate>& candidates : walker.takeCandidates()) {
        answers_.push_back(std::make_unique<Answer>());
        answers_.back()->candidates = std::move(candidates);
    }
}

// The causes that make an area unknown. Running out of time says nothing about what would have been found.
Causes FileFinder::countedGaps() const {
    return places_.configuration.search.incompleteIsUnknown ? ~Causes{0} : toCauses(Cause::kTimeBudget);
}

Causes FileFinder::gapsOf(const FileQuery& query) const {
    const Causes counted = countedGaps();
    Causes causes = 0;
    for (const Gap& gap : places_.gaps.all()) {
        if ((gap.causes & counted & ~causes) != 0 && query.reachesBelow(gap.directory))
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
        const std::optional<std::string> target = places_.tree.resolve(path);
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

const FoundFiles& FileFinder::walked(std::uint32_t number) {
    Answer& answer = *answers_[number];
    std::call_once(answer.once, [&] {
        const FileQuery& query = queries_.queries()[number];
        for (const Candidate& candidate : answer.candidates) add(candidate.path, query.types, &answer.found);
        answer.candidates = {};
        answer.found.causes |= gapsOf(query);
    });
    return answer.found;
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
