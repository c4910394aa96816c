#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "scanners/shared/random_access.h"

// The headers that rpm's databases hold, one function a back end. Each calls `take` with every header in the
// order of the database and returns what is wrong with it, empty when nothing is; headers before the damage
// have been delivered by then. Time and reading are linear in the size of the file.

using TakeBlob = std::function<void(std::string_view blob)>;

// Berkeley DB, a file `Packages`.
std::string readRpmBdb(const RandomAccess& file, const TakeBlob& take);

// rpm's own, a file `Packages.db`.
std::string readRpmNdb(const RandomAccess& file, const TakeBlob& take);

// SQLite, a file `rpmdb.sqlite` at `path`. It is taken as it lies there: no lock, no journal, nothing
// written.
std::string readRpmSqlite(const std::string& path, const TakeBlob& take);
