#include <algorithm>
#include <string>

#include "scanners/shared/packages/database_readers.h"
#include "scanners/shared/packages/dpkg.h"
#include "scanners/shared/packages/text.h"

namespace {

constexpr const char* kUsualPlace = "var/lib/dpkg";
constexpr const char* kAptStates = "var/lib/apt/extended_states";

std::string placeOf(const PackagePlaces& places) {
    return places.dpkg.empty() ? kUsualPlace : places.dpkg;
}

// Images without dpkg keep a file for each package, and beside it one with the checksums of its files.
void readParts(const RootedFs& fs, const std::string& directory, PackageDatabase& database) {
    std::string problem;
    for (const std::string& name : sortedNames(fs, directory, &problem)) {
        if (endsWith(name, ".md5sums")) continue;
        const std::string path = pathOf({directory, name});
        std::string text;
        const ReadStatus status = fs.read(path, &text, kMaxPackageFile);
        addProblem(database, problemText(status));
        PackageList part = parseDpkgControl(text);
        for (Package& package : part.packages) package.path = path;
        addPackages(database, std::move(part));
    }
    addProblem(database, problem);
}

void markAutomatic(const RootedFs& fs, std::vector<Package>& packages) {
    std::string text;
    if (fs.read(kAptStates, &text, kMaxDatabaseFile) != ReadStatus::Ok) return;
    const AutomaticPackages automatic(text);
    for (Package& package : packages) package.automatic = automatic.contains(package);
}

// "info/libc6:amd64.list" is libc6's.
std::string_view packageOfList(std::string_view fileName) {
    const std::string_view name = fileName.substr(0, fileName.rfind('.'));
    return name.substr(0, name.find(':'));
}

// Calls `take` with every line of the files in a directory whose names have that end, and with the package
// that each file is about.
template <typename Take>
void forEachLine(const RootedFs& fs, const std::string& directory, std::string_view end, std::string* problem,
                 Take take) {
    std::string text;
    for (const std::string& name : sortedNames(fs, directory, problem)) {
        if (!endsWith(name, end)) continue;
        const ReadStatus status = fs.read(pathOf({directory, name}), &text, kMaxPackageFile);
        if (problem->empty()) *problem = problemText(status);
        std::string_view rest = text;
        while (!rest.empty()) take(takeLine(rest), packageOfList(name));
    }
}

}  // namespace

std::optional<PackageDatabase> readDpkg(const RootedFs& fs, const PackagePlaces& places) {
    const std::string directory = placeOf(places);
    PackageDatabase database;
    database.path = directory + "/status";
    std::string text;
    const ReadStatus status = fs.read(database.path, &text, kMaxDatabaseFile);
    const bool parts = fs.exists(directory + "/status.d");
    if (status == ReadStatus::Missing && !parts) return std::nullopt;
    if (status != ReadStatus::Missing) addProblem(database, problemText(status));
    addPackages(database, parseDpkgStatus(text));
    if (parts) readParts(fs, directory + "/status.d", database);
    markAutomatic(fs, database.list.packages);
    return database;
}

std::string ownDpkg(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take) {
    std::string problem;
    forEachLine(fs, placeOf(places) + "/info", ".list", &problem, take);
    forEachLine(fs, placeOf(places) + "/status.d", ".md5sums", &problem,
                [&](std::string_view line, std::string_view package) {
                    takeWord(line);  // the checksum
                    const std::string_view path = trimBlanks(line);
                    if (!path.empty()) take("/" + std::string(path), package);
                });
    return problem;
}

void setDpkgInstallTimes(const RootedFs& fs, const PackagePlaces& places, std::vector<Package>& packages) {
    const std::string directory = placeOf(places) + "/info/";
    for (Package& package : packages) {
        if (package.manager != "dpkg" || !filesArePresent(package.state)) continue;
        // Packages that can be installed for several architectures have theirs in the name of the list.
        auto facts = fs.facts(directory + package.name + ".list");
        if (!facts) facts = fs.facts(directory + package.name + ":" + package.architecture + ".list");
        if (facts) package.installTime = facts->modified;
    }
}
