#include "scanners/shared/packages/apk.h"
#include "scanners/shared/packages/database_readers.h"

namespace {

// The file of the database, and what it holds. Newer systems keep it below /usr.
ReadStatus readInstalled(const RootedFs& fs, const PackagePlaces& places, std::string* path,
                         std::string* text) {
    ReadStatus status = ReadStatus::Missing;
    for (const char* usual : {"lib/apk/db", "usr/lib/apk/db"}) {
        *path = (places.apk.empty() ? usual : places.apk) + "/installed";
        status = fs.read(*path, text, kMaxDatabaseFile);
        if (status != ReadStatus::Missing) break;
    }
    return status;
}

}  // namespace

std::optional<PackageDatabase> readApk(const RootedFs& fs, const PackagePlaces& places) {
    PackageDatabase database;
    std::string text;
    const ReadStatus status = readInstalled(fs, places, &database.path, &text);
    if (status == ReadStatus::Missing) return std::nullopt;
    addProblem(database, problemText(status));
    addPackages(database, parseApkInstalled(text));
    return database;
}

std::string ownApk(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take) {
    std::string path;
    std::string text;
    const ReadStatus status = readInstalled(fs, places, &path, &text);
    if (status == ReadStatus::Missing) return "";
    forEachApkPath(text,
                   [&](const std::string& owned, std::string_view package) { take("/" + owned, package); });
    if (parseApkInstalled(text).broken > 0) return std::string(kBrokenEntries);
    return std::string(problemText(status));
}
