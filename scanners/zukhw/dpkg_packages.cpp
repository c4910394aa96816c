#include <set>
#include <string>
#include <utility>

#include "scanners/shared/packages/dpkg.h"
#include "scanners/shared/random_access.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/text_pieces.h"

namespace {

constexpr char kDirectory[] = "var/lib/dpkg/";

// offset: of the part of the file that gave the list.
void takeInstalled(Machine& machine, const std::string& path, std::size_t offset, PackageList list,
                   std::vector<Package>* packages) {
    if (list.broken != 0) machine.sources().malformed(path, offset + list.firstBroken);
    for (Package& package : list.packages) {
        if (package.state == PackageState::Installed) packages->push_back(std::move(package));
    }
}

void readStatusFile(Machine& machine, std::vector<Package>* packages) {
    const std::string path = std::string(kDirectory) + "status";
    const FileAccess file(machine.open(path));
    if (file.size() > Machine::kTable) return;
    for (TextPieces paragraphs(file, "\n\n"); paragraphs.next();) {
        machine.deadline().check();
        takeInstalled(machine, path, paragraphs.offset(), parseDpkgStatus(paragraphs.text()), packages);
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
        if (text) takeInstalled(machine, path, 0, parseDpkgControl(*text), packages);
    }
}

// The list of a package's files is written when it is installed.
std::optional<std::int64_t> timeOfList(Machine& machine, const std::string& name) {
    const auto facts = machine.facts(std::string(kDirectory).append("info/").append(name).append(".list"));
    return facts ? std::optional(facts->modified) : std::nullopt;
}

// It is named with the architecture where packages of several can be installed side by side.
std::optional<std::int64_t> installTime(Machine& machine, const Package& package) {
    const std::string qualified = package.name + ':' + package.architecture;
    const bool sideBySide = package.multiArch == "same";
    const auto time = timeOfList(machine, sideBySide ? qualified : package.name);
    return time ? time : timeOfList(machine, sideBySide ? package.name : qualified);
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
    readStatusFile(machine, &packages);
    readStatusDirectory(machine, &packages);
    if (packages.empty()) return packages;
    machine.files().stayIn(std::string(kDirectory) + "info");
    for (Package& package : packages) package.installTime = installTime(machine, package);
    markAutomatic(machine, &packages);
    return packages;
}
