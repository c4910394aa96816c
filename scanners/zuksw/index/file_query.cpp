#include "scanners/zuksw/index/file_query.h"

#include <algorithm>

#include "scanners/zuksw/walk/mounts.h"

namespace zuksw {

bool FilePlace::acceptsPath(std::string_view file) const {
    if (!under.empty() && (!isAtOrBelow(file, under) || file.size() == under.size())) return false;
    return !path || path->matches(file.substr(1));
}

bool FilePlace::reachesBelow(std::string_view directory) const {
    if (!isAtOrBelow(directory, under) && !isAtOrBelow(under, directory)) return false;
    return !path || directory.empty() || path->reachesBelow(directory.substr(1));
}

std::vector<std::string> FilePlace::areas() const {
    if (!path) return {under};
    std::vector<std::string> areas;
    for (const GlobSteps& steps : path->alternatives()) {
        const std::string literal = literalDirectory(steps);
        const std::string area = literal.empty() ? literal : "/" + literal;
        if (isAtOrBelow(area, under)) {
            areas.push_back(area);
        } else if (isAtOrBelow(under, area)) {
            areas.push_back(under);
        }
    }
    return areas;
}

std::uint32_t QuerySet::add(FileQuery query) {
    const std::uint32_t number = numbers_.add(query.key);
    if (number < placeOf_.size()) return number;
    for (const NameGlob& name : query.names) index_.add(name, number);
    if (query.pattern) index_.add(query.pattern, number);
    types_ |= query.types;
    placeOf_.push_back(addPlace(std::move(query)));
    return number;
}

std::uint32_t QuerySet::addPlace(FilePlace place) {
    const auto number = static_cast<std::uint32_t>(places_.size());
    if (!place.path) {
        const auto [entry, isNew] = plain_.try_emplace({place.types, place.under}, number);
        if (!isNew) return entry->second;
    }
    places_.push_back(std::move(place));
    return number;
}

void QuerySet::build(std::int64_t memory) {
    index_.build(memory);
}

void QuerySet::find(std::string_view directory, std::string_view name, EntryType type,
                    std::vector<std::uint32_t>* numbers) const {
    const std::size_t before = numbers->size();
    index_.find(name, numbers);
    if (numbers->size() == before) return;
    const std::string path = std::string(directory) + "/" + std::string(name);
    const auto begin = numbers->begin() + static_cast<std::ptrdiff_t>(before);
    std::sort(begin, numbers->end());
    numbers->erase(std::unique(begin, numbers->end()), numbers->end());
    const auto unwanted = [&](std::uint32_t number) {
        const FilePlace& place = places_[placeOf_[number]];
        return (place.types & type) == 0 || !place.acceptsPath(path);
    };
    numbers->erase(std::remove_if(begin, numbers->end(), unwanted), numbers->end());
}

std::vector<std::string> outermost(std::vector<std::string> directories) {
    std::sort(directories.begin(), directories.end());
    std::vector<std::string> kept;
    for (std::string& directory : directories) {
        const bool inside = std::any_of(kept.begin(), kept.end(), [&](const std::string& other) {
            return isAtOrBelow(directory, other);
        });
        if (!inside) kept.push_back(std::move(directory));
    }
    return kept;
}

std::vector<std::string> QuerySet::areas() const {
    std::vector<std::string> areas;
    for (const FilePlace& place : places_) {
        for (std::string& area : place.areas()) {
            if (area.empty()) return {""};
            areas.push_back(std::move(area));
        }
    }
    return outermost(std::move(areas));
}

}  // namespace zuksw
