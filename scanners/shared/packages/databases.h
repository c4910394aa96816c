#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/shared/packages/package.h"
#include "scanners/shared/rooted_fs.h"

// Places other than the usual ones, of the directories that hold the databases; empty: the usual one.
struct PackagePlaces {
    std::string dpkg;
    std::string apk;
    std::string rpm;
    std::string pacman;
};

// What one manager's database gave.
struct PackageDatabase {
    std::string_view manager;
    std::string path;     // of the file or directory that was read, relative to the root
    std::string problem;  // for people: why not all of it could be read; empty when it was
    PackageList list;
};

// The managers whose databases are known: dpkg, opkg, rpm, apk, pacman, flatpak, snap.
std::vector<std::string_view> packageManagers();

// Reads the database of every manager in `managers` (of all when that is empty) that this machine has. One
// that is there but cannot be read gives a problem; one that is not there gives nothing.
std::vector<PackageDatabase> readPackageDatabases(const RootedFs& fs, const PackagePlaces& places,
                                                  const std::vector<std::string>& managers);

// Receives the absolute path of something that a package brought, directories among them, and the package's
// name. Where /bin, /lib and the like are links, the path is the one below /usr.
using TakeOwnedPath = std::function<void(std::string_view path, std::string_view package)>;

// Calls `take` with every path that the databases know. Returns the problems met, for people.
std::vector<std::string> forEachOwnedPath(const RootedFs& fs, const PackagePlaces& places,
                                          const std::vector<std::string>& managers,
                                          const TakeOwnedPath& take);

// Sets the time of installation of dpkg's packages, which it does not write down: it is that of the list of
// the package's files. One look at a file for each package.
void setDpkgInstallTimes(const RootedFs& fs, const PackagePlaces& places, std::vector<Package>& packages);
