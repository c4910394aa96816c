#include "scanners/shared/packages/database_readers.h"
#include "scanners/shared/packages/opkg.h"
#include "scanners/shared/packages/text.h"

namespace {

// Routers, other small systems, and additions to a system that keep to themselves.
constexpr const char* kPlaces[] = {"usr/lib/opkg", "var/lib/opkg", "opt/lib/opkg"};

}  // namespace

std::optional<PackageDatabase> readOpkg(const RootedFs& fs, const PackagePlaces& /*places*/) {
    std::optional<PackageDatabase> database;
    for (const char* place : kPlaces) {
        const std::string path = std::string(place) + "/status";
        std::string text;
        const ReadStatus status = fs.read(path, &text, kMaxDatabaseFile);
        if (status == ReadStatus::Missing) continue;
        if (!database) database.emplace().path = path;
        addProblem(*database, problemText(status));
        addPackages(*database, parseOpkgStatus(text));
    }
    return database;
}

std::string ownOpkg(const RootedFs& fs, const PackagePlaces& /*places*/, const TakeOwnedPath& take) {
    std::string problem;
    std::string text;
    for (const char* place : kPlaces) {
        const std::string directory = std::string(place) + "/info";
        for (const std::string& name : sortedNames(fs, directory, &problem)) {
            if (!endsWith(name, ".list")) continue;
            const ReadStatus status = fs.read(pathOf({directory, name}), &text, kMaxPackageFile);
            if (problem.empty()) problem = problemText(status);
            std::string_view rest = text;
            while (!rest.empty()) {
                const std::string_view line = takeLine(rest);  // a path, and its mode behind a tab
                take(line.substr(0, line.find('\t')), std::string_view(name).substr(0, name.size() - 5));
            }
        }
    }
    return problem;
}
