#include "scanners/shared/packages/database_readers.h"
#include "scanners/shared/packages/snap.h"

namespace {

constexpr const char* kFiles = "var/lib/snapd/snaps";
constexpr const char* kMounts[] = {"snap", "var/lib/snapd/snap"};

// "firefox_4173.snap": name and revision.
bool splitName(std::string_view file, std::string* name, std::string* revision) {
    const auto underscore = file.rfind('_');
    if (!endsWith(file, ".snap") || underscore == std::string_view::npos) return false;
    *name = file.substr(0, underscore);
    *revision = file.substr(underscore + 1, file.size() - 5 - underscore - 1);
    return !name->empty() && !revision->empty();
}

// Snaps are file systems of their own; what one says about itself can be read while it is mounted.
Package describe(const RootedFs& fs, const std::string& name, const std::string& revision) {
    Package package;
    for (const char* mount : kMounts) {
        const std::string path = pathOf({mount, name, revision, "meta/snap.yaml"});
        std::string text;
        if (fs.read(path, &text, kMaxPackageFile) != ReadStatus::Ok) continue;
        package = parseSnapYaml(text);
        package.path = path;
        break;
    }
    package.manager = "snap";
    package.name = name;
    package.revision = revision;
    return package;
}

// The revision in use; older ones are kept for going back.
bool isCurrent(const RootedFs& fs, const std::string& name, const std::string& revision) {
    for (const char* mount : kMounts) {
        std::string target;
        if (fs.readLink(pathOf({mount, name, "current"}), &target) == ReadStatus::Ok)
            return target == revision;
    }
    return true;
}

}  // namespace

std::optional<PackageDatabase> readSnap(const RootedFs& fs, const PackagePlaces& /*places*/) {
    PackageDatabase database;
    database.path = kFiles;
    if (!fs.exists(database.path)) return std::nullopt;
    std::string problem;
    for (const std::string& file : sortedNames(fs, database.path, &problem)) {
        std::string name;
        std::string revision;
        if (!splitName(file, &name, &revision) || !isCurrent(fs, name, revision)) continue;
        database.list.packages.push_back(describe(fs, name, revision));
    }
    addProblem(database, problem);
    return database;
}
