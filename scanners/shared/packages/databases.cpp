#include "scanners/shared/packages/databases.h"

#include <algorithm>
#include <utility>

#include "scanners/shared/packages/database_readers.h"

namespace {

struct Manager {
    std::string_view name;
    std::optional<PackageDatabase> (*read)(const RootedFs&, const PackagePlaces&);
    std::string (*own)(const RootedFs&, const PackagePlaces&, const TakeOwnedPath&);  // null: keeps no paths
};

constexpr Manager kManagers[] = {
    {"dpkg", readDpkg, ownDpkg}, {"opkg", readOpkg, ownOpkg},       {"rpm", readRpm, ownRpm},
    {"apk", readApk, ownApk},    {"pacman", readPacman, ownPacman}, {"flatpak", readFlatpak, nullptr},
    {"snap", readSnap, nullptr},
};

bool isWanted(const Manager& manager, const std::vector<std::string>& wanted) {
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), manager.name) != wanted.end();
}

// Databases may still say /bin/sh where /bin has become a link to /usr/bin.
class MergedFolders {
  public:
    explicit MergedFolders(const RootedFs& fs) {
        for (const char* folder :
             {"bin", "sbin", "lib", "lib32", "lib64", "libx32", "usr/sbin", "usr/lib64"}) {
            std::string target;
            if (fs.readLink(folder, &target) != ReadStatus::Ok) continue;
            if (const auto real = fs.resolve(folder))
                links_.emplace_back("/" + std::string(folder) + "/", "/" + *real + "/");
        }
    }

    // `buffer` holds the result when it differs from `path`.
    std::string_view real(std::string_view path, std::string& buffer) const {
        for (const auto& [link, target] : links_) {
            if (path.substr(0, link.size()) != link) continue;
            buffer = target;
            return buffer.append(path.substr(link.size()));
        }
        return path;
    }

  private:
    std::vector<std::pair<std::string, std::string>> links_;
};

}  // namespace

std::vector<std::string_view> packageManagers() {
    std::vector<std::string_view> names;
    for (const Manager& manager : kManagers) names.push_back(manager.name);
    return names;
}

std::vector<PackageDatabase> readPackageDatabases(const RootedFs& fs, const PackagePlaces& places,
                                                  const std::vector<std::string>& managers) {
    std::vector<PackageDatabase> databases;
    for (const Manager& manager : kManagers) {
        if (!isWanted(manager, managers)) continue;
        std::optional<PackageDatabase> database = manager.read(fs, places);
        if (!database) continue;
        database->manager = manager.name;
        databases.push_back(std::move(*database));
    }
    return databases;
}

std::vector<std::string> forEachOwnedPath(const RootedFs& fs, const PackagePlaces& places,
                                          const std::vector<std::string>& managers,
                                          const TakeOwnedPath& take) {
    std::vector<std::string> problems;
    const MergedFolders merged(fs);
    std::string buffer;
    const auto takeReal = [&](std::string_view path, std::string_view package) {
        take(merged.real(path, buffer), package);
    };
    for (const Manager& manager : kManagers) {
        if (manager.own == nullptr || !isWanted(manager, managers)) continue;
        const std::string problem = manager.own(fs, places, takeReal);
        if (!problem.empty()) problems.push_back(std::string(manager.name) + ": " + problem);
    }
    return problems;
}
