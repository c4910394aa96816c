#include <set>
#include <string>
#include <utility>

#include "scanners/shared/packages/dpkg.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kDirectory[] = "var/lib/dpkg/";

void takeInstalled(Machine& machine, const std::string& path, PackageList list,
                   std::vector<Package>* packages) {
    if (list.broken != 0) machine.sources().malformed(path, list.firstBroken);
    for (Package& package : list.packages) {
        if (package.state == PackageState::Installed) packages->push_back(std::move(package));
    }
}

// Images without dpkg keep a file for each package.
void readStatusDirectory(Machine& machine, std::vector<Package>* packages) {
    const std::string directory = std::string(kDirectory) + "status.d";
    if (!machine.exists(directory)) return;
    for (const std::string& name : machine.list(directory)) {
        if (endsWith(name, ".md5sums")) continue;
        const std::string path = std::string(directory).append("/").append(name);
        const auto text = machine.read(path);
        if (text) takeInstalled(machine, path, parseDpkgControl(*text), packages);
    }
}

// The list of a package's files is written when it is installed, and named with the architecture where
// packages of several can be installed side by side.
std::optional<std::int64_t> installTime(Machine& machine, const Package& package) {
    const std::string start = std::string(kDirectory) + "info/" + package.name;
    const auto facts = machine.facts(start + ".list");
    if (facts) return facts->modified;
    const auto qualified = machine.facts(start + ':' + package.architecture + ".list");
    return qualified ? std::optional(qualified->modified) : std::nullopt;
}

void markAutomatic(Machine& machine, std::vector<Package>* packages) {
    const auto states =
        parseAptAutomatic(machine.read("var/lib/apt/extended_states", Machine::kTable).value_or(""));
    for (Package& package : *packages) {
        // Of packages for all architectures apt writes the machine's own.
        const bool any = package.architecture == "all";
        const auto found = states.lower_bound({package.name, any ? "" : package.architecture});
        package.automatic = found != states.end() && found->first == package.name &&
                            (any || found->second == package.architecture);
    }
}

}  // namespace

std::vector<Package> readDpkgPackages(Machine& machine) {
    std::vector<Package> packages;
    const std::string path = std::string(kDirectory) + "status";
    const auto text = machine.read(path, Machine::kTable);
    if (text) takeInstalled(machine, path, parseDpkgStatus(*text), &packages);
    readStatusDirectory(machine, &packages);
    if (packages.empty()) return packages;
    for (Package& package : packages) package.installTime = installTime(machine, package);
    markAutomatic(machine, &packages);
    return packages;
}
