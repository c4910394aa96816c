// Group "SoftwarePackages": one instance per package that is installed, by manager, name, architecture and
// version.
#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/text.h"

namespace {

using Read = std::vector<Package> (*)(Machine&);

// In the order of the managers' names.
constexpr Read kManagers[] = {readApkPackages, readDpkgPackages, readFlatpakPackages, readGuixPackages,
                              readNixPackages, readOpkgPackages, readPacmanPackages,  readPortagePackages,
                              readRpmPackages, readSnapPackages, readXbpsPackages};

bool comesBefore(const Package& a, const Package& b) {
    if (const int order = naturalOrder(a.name, b.name); order != 0) return order < 0;
    if (const int order = naturalOrder(a.architecture, b.architecture); order != 0) return order < 0;
    return naturalLess(a.version, b.version);
}

void writeOrigin(const Package& package, GroupWriter& out) {
    const bool isRpm = package.manager == "rpm";
    out.text("Vendor", package.vendor);
    out.text("Maintainer", package.maintainer);
    out.text("Summary", package.summary);
    // What rpm writes where the package says nothing.
    const bool isUnspecified = isRpm && package.section == "Unspecified";
    if (!isUnspecified) out.text(isRpm ? "Group" : "Section", package.section);
    out.text("Source", package.source);
    out.text("License", package.license);
}

bool isOneOf(std::string_view manager, std::initializer_list<std::string_view> managers) {
    return std::find(managers.begin(), managers.end(), manager) != managers.end();
}

void writeInstallation(const Package& package, GroupWriter& out) {
    const bool isDpkg = package.manager == "dpkg";
    out.number("InstalledBytes", package.installedBytes);
    if (package.installTime) out.text("InstallDate", utcDate(*package.installTime));
    if (isDpkg) out.boolean("Essential", package.essential);
    if (isOneOf(package.manager, {"dpkg", "opkg", "pacman", "xbps"}))
        out.boolean("Automatic", package.automatic);
    if (isOneOf(package.manager, {"dpkg", "opkg", "xbps"})) out.boolean("Held", package.held);
}

void writePackage(const Package& package, GroupWriter& out) {
    out.beginInstance();
    out.text("Name", package.name);
    out.text("Version", package.version);
    if (package.manager == "rpm") {
        out.text("Epoch", package.epoch);
        out.text("Release", package.revision);
    }
    out.text("Architecture", package.architecture);
    out.text("Manager", package.manager);
    writeOrigin(package, out);
    writeInstallation(package, out);
}

// Pointers, because packages are too large to be moved about.
std::vector<const Package*> sorted(const std::vector<Package>& packages) {
    std::vector<const Package*> order;
    order.reserve(packages.size());
    for (const Package& package : packages) order.push_back(&package);
    // Databases are nearly in order already, which a merge makes use of.
    std::stable_sort(order.begin(), order.end(),
                     [](const Package* a, const Package* b) { return comesBefore(*a, *b); });
    return order;
}

}  // namespace

void collectSoftwarePackages(Machine& machine, GroupWriter& out) {
    for (const Read read : kManagers) {
        const std::vector<Package> packages = read(machine);
        for (const Package* package : sorted(packages)) writePackage(*package, out);
    }
}
