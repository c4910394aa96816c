#include <cerrno>

#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/packages/database_readers.h"
#include "scanners/shared/packages/rpm_blobs.h"
#include "scanners/shared/packages/rpm_header.h"

namespace {

constexpr const char* kPlaces[] = {"usr/lib/sysimage/rpm", "var/lib/rpm", "usr/share/rpm"};
constexpr const char* kSqlite = "rpmdb.sqlite";
constexpr const char* kNdb = "Packages.db";
constexpr const char* kBdb = "Packages";

// The first database file that there is; empty when there is none.
std::string findDatabase(const RootedFs& fs, const PackagePlaces& places) {
    for (const char* usual : kPlaces) {
        const std::string directory = places.rpm.empty() ? usual : places.rpm;
        for (const char* name : {kSqlite, kNdb, kBdb}) {
            std::string path = directory + "/" + name;
            if (fs.exists(path)) return path;
        }
    }
    return "";
}

// Calls `take` with every header and returns the problem met.
std::string readBlobs(const RootedFs& fs, const std::string& path, const TakeBlob& take) {
    FileDescriptor file = fs.openRegular(path);
    if (!file.valid())
        return std::string(problemText(errno == EACCES ? ReadStatus::Denied : ReadStatus::Unusable));
    if (endsWith(path, kSqlite)) return readRpmSqlite(descriptorPath(file), take);
    const FileAccess access(std::move(file));
    return endsWith(path, kNdb) ? readRpmNdb(access, take) : readRpmBdb(access, take);
}

}  // namespace

std::optional<PackageDatabase> readRpm(const RootedFs& fs, const PackagePlaces& places) {
    PackageDatabase database;
    database.path = findDatabase(fs, places);
    if (database.path.empty()) return std::nullopt;
    PackageList part;
    const std::string problem = readBlobs(fs, database.path, [&](std::string_view blob) {
        std::optional<Package> package = parseRpmHeader(blob);
        if (!package) return part.skipBroken(0);
        if (!isRpmKey(*package)) part.packages.push_back(std::move(*package));
    });
    addProblem(database, problem);
    addPackages(database, std::move(part));
    return database;
}

std::string ownRpm(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take) {
    const std::string path = findDatabase(fs, places);
    if (path.empty()) return "";
    bool isBroken = false;
    const std::string problem = readBlobs(fs, path, [&](std::string_view blob) {
        const std::optional<Package> package = parseRpmHeader(blob);
        if (!package) {
            isBroken = true;
            return;
        }
        forEachRpmPath(blob, [&](const std::string& owned) { take(owned, package->name); });
    });
    return problem.empty() && isBroken ? std::string(kBrokenEntries) : problem;
}
