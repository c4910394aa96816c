// Group "SoftwarePackages": one instance per package that is installed, by manager, name, architecture and
// version.
#include <algorithm>
#include <deque>
#include <initializer_list>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/text.h"

namespace {

using Read = void (*)(Machine&, const TakePackage&);

template <std::vector<Package> (*readAll)(Machine&)>
void readEach(Machine& machine, const TakePackage& take) {
    for (Package& package : readAll(machine)) take(package);
}

// In the order of the managers' names.
constexpr Read kManagers[] = {readEach<readApkPackages>,     readDpkgPackages,
                              readEach<readFlatpakPackages>, readEach<readGuixPackages>,
                              readEach<readNixPackages>,     readEach<readOpkgPackages>,
                              readEach<readPacmanPackages>,  readEach<readPortagePackages>,
                              readEach<readRpmPackages>,     readEach<readSnapPackages>,
                              readEach<readXbpsPackages>};

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

// Writes the packages of a manager as they come and puts them in order at the end: of the thousands that
// there may be, only what they are ordered by is kept.
class PackageWriter {
  public:
    explicit PackageWriter(GroupWriter& out) : out_(out), first_(out.instances()) {}
    // Also when time is up, so that those that were found in time are in order.
    ~PackageWriter() {
        out_.finish();
        out_.reorder(first_, order());
    }
    PackageWriter(const PackageWriter&) = delete;
    PackageWriter& operator=(const PackageWriter&) = delete;

    // Every package has a manager and so becomes an instance: there are as many of these as keys.
    void write(Package& package) {
        writePackage(package, out_);
        keys_.push_back(
            {std::move(package.name), std::move(package.architecture), std::move(package.version)});
    }

  private:
    struct Key {
        std::string name, architecture, version;
    };

    static bool comesBefore(const Key& a, const Key& b) {
        if (const int order = naturalOrder(a.name, b.name); order != 0) return order < 0;
        if (const int order = naturalOrder(a.architecture, b.architecture); order != 0) return order < 0;
        return naturalLess(a.version, b.version);
    }

    // Databases are nearly in order already, which a merge makes use of.
    std::vector<std::size_t> order() const {
        std::vector<std::size_t> order(keys_.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::stable_sort(order.begin(), order.end(),
                         [this](std::size_t a, std::size_t b) { return comesBefore(keys_[a], keys_[b]); });
        return order;
    }

    GroupWriter& out_;
    std::size_t first_;
    std::deque<Key> keys_;  // as large as all else here: it had better not move
};

}  // namespace

void collectSoftwarePackages(Machine& machine, GroupWriter& out) {
    for (const Read read : kManagers) {
        PackageWriter writer(out);
        read(machine, [&writer](Package& package) { writer.write(package); });
    }
}
