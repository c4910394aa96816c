#include <sys/stat.h>

#include "scanners/shared/packages/rpm_blobs.h"
#include "scanners/shared/sqlite_file.h"

namespace {

std::uint64_t sizeOf(const std::string& path) {
    struct stat facts = {};
    return stat(path.c_str(), &facts) == 0 && facts.st_size > 0 ? static_cast<std::uint64_t>(facts.st_size)
                                                                : 0;
}

}  // namespace

std::string readRpmSqlite(const std::string& path, const TakeBlob& take) {
    std::uint64_t bytesLeft = sizeOf(path);
    bool isTooLong = false;
    const std::string problem = readSqlite(path, "SELECT blob FROM Packages", [&](const SqliteRow& row) {
        const std::string_view blob = row.bytes(0);
        // A made column can be computed, and then be longer than all that the file holds.
        isTooLong = blob.size() > bytesLeft;
        if (isTooLong) return false;
        bytesLeft -= blob.size();
        take(blob);
        return true;
    });
    return isTooLong ? "the packages are longer than the database" : problem;
}
