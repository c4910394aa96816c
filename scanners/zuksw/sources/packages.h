#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "scanners/zuksw/sources/package_object.h"

namespace zuksw {

struct FileQuery;

/** The packages of one manager. */
struct ManagerPackages {
    std::vector<std::shared_ptr<const PackageObject>> all;
    std::unordered_map<std::string_view, std::vector<std::size_t>> byName;  // places in `all`
    Causes causes = 0;                                                      // why some may be missing
};

/** What package managers have installed: those of the machine, whose databases are read, and those of
 *  programming languages, whose files the walk finds. Each is read when first asked for. Any thread may ask.
 */
class Packages {
  public:
    /** Every manager that a condition may name. */
    static const std::vector<std::string_view>& managers();
    /** Those whose packages are installed for the whole machine: what "any" means. */
    static const std::vector<std::string_view>& machineManagers();

    /** What the walk must find for the manager; nothing for one that has a database. */
    static void demand(std::string_view manager, std::vector<FileQuery>* queries);

    /** Empty when the manager is not there or not to be read. */
    const ManagerPackages& of(std::string_view manager, Machine& machine);
    /** The name of the machine's package that brought the path. */
    Text ownerOf(const std::string& path, Machine& machine);

  private:
    void readDatabases(Machine& machine);
    void readOwners(Machine& machine);
    void readWalked(std::string_view manager, Machine& machine, ManagerPackages* packages);
    static bool isWanted(std::string_view manager, const Machine& machine);

    std::mutex mutex_;
    bool databasesRead_ = false;
    std::map<std::string_view, ManagerPackages> managers_;

    std::once_flag ownersOnce_;
    // Hashes of paths, in ascending order, with the place of the owner's name: all paths of a machine in a
    // few megabytes.
    std::vector<std::pair<std::uint64_t, std::uint32_t>> owners_;
    std::vector<std::string> ownerNames_;
    Causes ownerCauses_ = 0;
};

}  // namespace zuksw
