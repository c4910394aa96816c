#include "scanners/shared/packages/database_readers.h"
#include "scanners/shared/packages/pacman.h"

namespace {

std::string placeOf(const PackagePlaces& places) {
    return (places.pacman.empty() ? "var/lib/pacman" : places.pacman) + "/local";
}

// "bash-5.1.016-1" is bash's directory: version and release have no hyphen.
std::string_view packageOfDirectory(std::string_view name) {
    for (int parts = 0; parts < 2; ++parts) name = name.substr(0, name.rfind('-'));
    return name;
}

}  // namespace

std::optional<PackageDatabase> readPacman(const RootedFs& fs, const PackagePlaces& places) {
    PackageDatabase database;
    database.path = placeOf(places);
    if (!fs.exists(database.path)) return std::nullopt;
    std::string problem;
    for (const std::string& name : sortedNames(fs, database.path, &problem)) {
        const std::string path = pathOf({database.path, name, "desc"});
        std::string text;
        const ReadStatus status = fs.read(path, &text, kMaxPackageFile);
        if (status == ReadStatus::Missing) continue;  // the file that tells the database's version
        addProblem(database, problemText(status));
        PackageList part;
        if (std::optional<Package> package = parsePacmanDesc(text)) {
            package->path = path;
            part.packages.push_back(std::move(*package));
        } else {
            part.skipBroken(0);
        }
        addPackages(database, std::move(part));
    }
    addProblem(database, problem);
    return database;
}

std::string ownPacman(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take) {
    std::string problem;
    std::string text;
    const std::string directory = placeOf(places);
    for (const std::string& name : sortedNames(fs, directory, &problem)) {
        const ReadStatus status = fs.read(pathOf({directory, name, "files"}), &text, kMaxPackageFile);
        if (status == ReadStatus::Missing) continue;
        if (problem.empty()) problem = problemText(status);
        forEachPacmanPath(
            text, [&](std::string_view path) { take("/" + std::string(path), packageOfDirectory(name)); });
    }
    return problem;
}
