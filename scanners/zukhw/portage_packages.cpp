#include <string>
#include <string_view>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kDirectory[] = "var/db/pkg";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// "r1" of "bash-5.2_p21-r1".
bool isRevision(std::string_view part) {
    return startsWith(part, "r") && parseDecimal(part.substr(1)).has_value();
}

// "bash-5.2_p21-r1" into "bash" and "5.2_p21-r1"; false when there is no version.
bool splitName(std::string_view whole, Package* package) {
    std::size_t hyphen = whole.rfind('-');
    if (hyphen == std::string_view::npos || hyphen == 0) return false;
    if (isRevision(whole.substr(hyphen + 1))) {
        package->revision = whole.substr(hyphen + 1);
        hyphen = whole.rfind('-', hyphen - 1);
    }
    if (hyphen == std::string_view::npos || hyphen == 0) return false;
    package->name = whole.substr(0, hyphen);
    package->version = whole.substr(hyphen + 1);
    return !package->version.empty() && isDigit(package->version[0]);
}

// Every fact is a file of its own.
Package readFacts(Machine& machine, const std::string& directory, Package package) {
    const std::string host = machine.text(directory + "/CHOST");  // "x86_64-pc-linux-gnu"
    package.architecture = host.substr(0, host.find('-'));
    package.summary = machine.text(directory + "/DESCRIPTION");
    package.license = machine.text(directory + "/LICENSE");
    package.installedBytes = machine.number(directory + "/SIZE");
    return package;
}

}  // namespace

std::vector<Package> readPortagePackages(Machine& machine) {
    std::vector<Package> packages;
    if (!machine.exists(kDirectory)) return packages;
    for (const std::string& category : machine.list(kDirectory)) {
        const std::string parent = std::string(kDirectory) + '/' + category + '/';
        for (const std::string& name : machine.list(parent)) {
            if (startsWith(name, "-") || startsWith(name, ".")) continue;  // "-MERGING-...": not yet there
            Package package;
            package.manager = "portage";
            package.section = category;
            if (!splitName(name, &package)) {
                machine.sources().malformed(parent + name, 0);
                continue;
            }
            package.name.insert(0, category + '/');  // names repeat from category to category
            packages.push_back(readFacts(machine, parent + name, std::move(package)));
        }
    }
    return packages;
}
