#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/shared/affix.h"
#include "scanners/shared/packages/databases.h"

// One pair of functions a manager. `read...`: no value when the machine has no such database. `own...` calls
// `take` with the paths as the database writes them, and returns the problem met.

std::optional<PackageDatabase> readDpkg(const RootedFs& fs, const PackagePlaces& places);
std::string ownDpkg(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take);

std::optional<PackageDatabase> readOpkg(const RootedFs& fs, const PackagePlaces& places);
std::string ownOpkg(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take);

std::optional<PackageDatabase> readRpm(const RootedFs& fs, const PackagePlaces& places);
std::string ownRpm(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take);

std::optional<PackageDatabase> readApk(const RootedFs& fs, const PackagePlaces& places);
std::string ownApk(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take);

std::optional<PackageDatabase> readPacman(const RootedFs& fs, const PackagePlaces& places);
std::string ownPacman(const RootedFs& fs, const PackagePlaces& places, const TakeOwnedPath& take);

std::optional<PackageDatabase> readFlatpak(const RootedFs& fs, const PackagePlaces& places);
std::optional<PackageDatabase> readSnap(const RootedFs& fs, const PackagePlaces& places);

// What they share.

constexpr std::size_t kMaxDatabaseFile = std::size_t{256} << 20U;
constexpr std::size_t kMaxPackageFile = std::size_t{16} << 20U;

constexpr std::string_view kBrokenEntries = "some entries make no sense";

std::string_view problemText(ReadStatus status);  // empty for Ok

// Adds what is wrong; only the first problem is kept.
void addProblem(PackageDatabase& database, std::string_view problem);

// Moves the packages of `part` behind those of the database, and counts what was broken.
void addPackages(PackageDatabase& database, PackageList part);

// The names in a directory, sorted. An unreadable directory is a problem.
std::vector<std::string> sortedNames(const RootedFs& fs, const std::string& directory, std::string* problem);

// The names with a slash between each two.
std::string pathOf(std::initializer_list<std::string_view> names);
