#include "scanners/zuksw/index/file_query.h"

#include <algorithm>

#include "scanners/zuksw/walk/mounts.h"

namespace zuksw {

bool FileQuery::acceptsPath(std::string_view file) const {
    if (!under.empty() && (!isAtOrBelow(file, under) || file.size() == under.size())) return false;
    return !path || path->matches(file.substr(1));
}

bool FileQuery::reachesBelow(std::string_view directory) const {
    if (!isAtOrBelow(directory, under) && !isAtOrBelow(under, directory)) return false;
    return !path || directory.empty() || path->reachesBelow(directory.substr(1));
}

std::vector<std::string> FileQuery::areas() const {
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
    const auto number = static_cast<std::uint32_t>(queries_.size());
    const auto [entry, isNew] = numbers_.emplace(std::move(query.key), number);
    if (!isNew) return entry->second;
    for (const NameGlob& name : query.names) index_.add(name, number);
    if (query.pattern) index_.add(query.pattern, number);
    query.names = {};  // the index has them
    types_ |= query.types;
    queries_.push_back(std::move(query));
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
        const FileQuery& query = queries_[number];
        return (query.types & type) == 0 || !query.acceptsPath(path);
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
    for (const FileQuery& query : queries_) {
        for (std::string& area : query.areas()) {
            if (area.empty()) return {""};
            areas.push_back(std::move(area));
        }
    }
    return outermost(std::move(areas));
}

}  // namespace zuksw
