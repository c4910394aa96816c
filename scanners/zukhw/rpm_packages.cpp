#include <string>
#include <utility>

#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/packages/rpm_blobs.h"
#include "scanners/shared/packages/rpm_header.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"

namespace {

enum class BackEnd { Sqlite, Ndb, Bdb };

struct Database {
    const char* file;
    BackEnd backEnd;
};

// Newest first: after a conversion the old file may still lie there.
constexpr Database kDatabases[] = {
    {"rpmdb.sqlite", BackEnd::Sqlite}, {"Packages.db", BackEnd::Ndb}, {"Packages", BackEnd::Bdb}};

std::string readDatabase(FileDescriptor file, BackEnd backEnd, const TakeBlob& take) {
    if (backEnd == BackEnd::Sqlite) return readRpmSqlite(descriptorPath(file), take);
    const FileAccess access(std::move(file));
    return backEnd == BackEnd::Ndb ? readRpmNdb(access, take) : readRpmBdb(access, take);
}

}  // namespace

std::vector<Package> readRpmPackages(Machine& machine) {
    std::vector<Package> packages;
    for (const char* directory : {"usr/lib/sysimage/rpm/", "var/lib/rpm/"}) {
        for (const Database& database : kDatabases) {
            const std::string path = std::string(directory) + database.file;
            FileDescriptor file = machine.open(path);
            if (!file.valid()) continue;
            const std::string problem =
                readDatabase(std::move(file), database.backEnd, [&](std::string_view blob) {
                    machine.deadline().check();
                    auto package = parseRpmHeader(blob);
                    if (!package) machine.sources().malformed(path, 0);
                    if (package && !isRpmKey(*package)) packages.push_back(std::move(*package));
                });
            if (!problem.empty()) machine.sources().malformed(path, 0);
            return packages;
        }
    }
    return packages;
}
