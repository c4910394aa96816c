#include "scanners/zukhw/package_databases.h"

#include <iterator>
#include <string>
#include <utility>

#include "scanners/shared/packages/apk.h"
#include "scanners/shared/packages/database_readers.h"
#include "scanners/shared/packages/databases.h"
#include "scanners/shared/packages/opkg.h"
#include "scanners/shared/packages/pacman.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

// The packages of a list that are wholly installed.
std::vector<Package> installed(Machine& machine, const char* path, PackageList list) {
    if (list.broken != 0) machine.sources().malformed(path, list.firstBroken);
    std::vector<Package> packages;
    packages.reserve(list.packages.size());
    for (Package& package : list.packages) {
        if (package.state == PackageState::Installed) packages.push_back(std::move(package));
    }
    return packages;
}

// Of the managers whose packages lie each in a directory of their own.
std::vector<Package> readDirectories(Machine& machine, const std::string& manager) {
    machine.deadline().check();
    std::vector<Package> packages;
    for (PackageDatabase& database : readPackageDatabases(machine.files(), {}, {manager})) {
        const bool denied = database.problem == problemText(ReadStatus::Denied);
        if (denied) machine.sources().denied(database.path);
        if (!denied && !database.problem.empty()) machine.sources().malformed(database.path, 0);
        packages = std::move(database.list.packages);
        for (Package& package : packages) package.manager = database.manager;
    }
    return packages;
}

}  // namespace

std::vector<Package> readApkPackages(Machine& machine) {
    // The place has changed with the merge of /lib into /usr.
    for (const char* path : {"lib/apk/db/installed", "usr/lib/apk/db/installed"}) {
        const auto text = machine.read(path, Machine::kTable);
        if (text) return installed(machine, path, parseApkInstalled(*text));
    }
    return {};
}

std::vector<Package> readOpkgPackages(Machine& machine) {
    for (const char* path : {"usr/lib/opkg/status", "var/lib/opkg/status"}) {
        const auto text = machine.read(path, Machine::kTable);
        if (text) return installed(machine, path, parseOpkgStatus(*text));
    }
    return {};
}

std::vector<Package> readPacmanPackages(Machine& machine) {
    const std::string directory = "var/lib/pacman/local/";
    std::vector<Package> packages;
    for (const std::string& name : machine.list(directory)) {
        const std::string path = directory + name + "/desc";
        const auto text = machine.read(path);
        if (!text) continue;  // ALPM_DB_VERSION is a file among the packages
        if (auto package = parsePacmanDesc(*text)) {
            packages.push_back(std::move(*package));
        } else {
            machine.sources().malformed(path, 0);
        }
    }
    return packages;
}

std::vector<Package> readFlatpakPackages(Machine& machine) {
    return readDirectories(machine, "flatpak");
}

std::vector<Package> readSnapPackages(Machine& machine) {
    return readDirectories(machine, "snap");
}
