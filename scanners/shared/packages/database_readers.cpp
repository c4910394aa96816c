#include "scanners/shared/packages/database_readers.h"

#include <algorithm>
#include <iterator>
#include <utility>

std::string_view problemText(ReadStatus status) {
    switch (status) {
        case ReadStatus::Ok:
            return "";
        case ReadStatus::Missing:
            return "no such file";
        case ReadStatus::Denied:
            return "permission denied";
        case ReadStatus::Unusable:
            break;
    }
    return "cannot be read";
}

void addProblem(PackageDatabase& database, std::string_view problem) {
    if (database.problem.empty()) database.problem = problem;
}

void addPackages(PackageDatabase& database, PackageList part) {
    std::vector<Package>& all = database.list.packages;
    all.insert(all.end(), std::make_move_iterator(part.packages.begin()),
               std::make_move_iterator(part.packages.end()));
    if (part.broken == 0) return;
    if (database.list.broken == 0) database.list.firstBroken = part.firstBroken;
    database.list.broken += part.broken;
    addProblem(database, kBrokenEntries);
}

std::vector<std::string> sortedNames(const RootedFs& fs, const std::string& directory, std::string* problem) {
    std::vector<std::string> names;
    const ReadStatus status = fs.list(directory, &names);
    if (status == ReadStatus::Denied || status == ReadStatus::Unusable) *problem = problemText(status);
    std::sort(names.begin(), names.end());
    return names;
}

std::string pathOf(std::initializer_list<std::string_view> names) {
    std::string path;
    for (const std::string_view name : names) {
        if (!path.empty()) path += '/';
        path += name;
    }
    return path;
}
