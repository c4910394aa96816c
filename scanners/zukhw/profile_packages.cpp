#include <algorithm>
#include <string>
#include <utility>

#include "scanners/zukhw/json.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/profile_manifests.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kNixProfiles[] = "nix/var/nix/profiles/";
constexpr char kGuixProfiles[] = "var/guix/profiles/";

// "legacyPackages.x86_64-linux.hello"
std::string systemIn(const std::string& attributePath) {
    const std::vector<std::string_view> parts = split(attributePath, '.');
    const bool tells = parts.size() > 2 && parts[1].find('-') != std::string_view::npos;
    return tells ? std::string(parts[1]) : "";
}

// "hello-2.12.1" of "/nix/store/HASH-hello-2.12.1"; of several outputs the one with the shortest name.
std::string storeName(const Json& element) {
    std::string best;
    const Json* paths = findMember(element, "storePaths");
    if (paths == nullptr || !paths->is_array()) return best;
    for (const Json& path : *paths) {
        if (!path.is_string()) continue;
        std::string name = path.get<std::string>();
        name.erase(0, name.find_last_of('/') + 1);
        name.erase(0, std::min(name.find('-'), name.size() - 1) + 1);
        if (best.empty() || name.size() < best.size()) best = std::move(name);
    }
    return best;
}

void addElement(const Json& element, std::vector<Package>* packages) {
    const Json* active = findMember(element, "active");
    const std::string name = storeName(element);
    if (name.empty() || (active != nullptr && *active == false)) return;
    Package package;
    package.manager = "nix";
    setNixName(package, name);
    package.architecture = systemIn(textMember(element, "attrPath"));
    packages->push_back(std::move(package));
}

// A list of elements, or since version 3 an object of them.
bool readElements(Machine& machine, const std::string& path, std::vector<Package>* packages) {
    if (!machine.exists(path)) return false;
    const auto document = readJson(machine, path);
    const Json* elements = document ? findMember(*document, "elements") : nullptr;
    if (elements == nullptr || !elements->is_structured()) return true;
    for (const Json& element : *elements) addElement(element, packages);
    return true;
}

using Parse = std::optional<std::vector<Package>> (*)(std::string_view);

void readManifest(Machine& machine, const std::string& path, Parse parse, std::vector<Package>* packages) {
    if (!machine.exists(path)) return;
    const auto text = machine.read(path, Machine::kTable);
    auto found = text ? parse(*text) : std::nullopt;
    if (text && !found) machine.sources().malformed(path, 0);
    if (found) packages->insert(packages->end(), found->begin(), found->end());
}

void readNixProfile(Machine& machine, const std::string& profile, std::vector<Package>* packages) {
    if (readElements(machine, profile + "/manifest.json", packages)) return;
    readManifest(machine, profile + "/manifest.nix", parseNixManifest, packages);
}

// Profiles are links to their generations, which stay beside them: "guix-profile-12-link".
std::vector<std::string> profilesIn(Machine& machine, const std::string& directory) {
    std::vector<std::string> profiles;
    if (!machine.exists(directory)) return profiles;
    const std::string start = directory + '/';
    for (const std::string& name : machine.list(directory)) {
        if (!endsWith(name, "-link")) profiles.push_back(start + name);
    }
    return profiles;
}

// What several profiles have is installed once.
std::vector<Package> withoutRepeats(std::vector<Package> packages) {
    const auto key = [](const Package& p) { return std::tie(p.name, p.version, p.architecture); };
    std::sort(packages.begin(), packages.end(),
              [&](const Package& a, const Package& b) { return key(a) < key(b); });
    const auto same = [&](const Package& a, const Package& b) { return key(a) == key(b); };
    packages.erase(std::unique(packages.begin(), packages.end(), same), packages.end());
    return packages;
}

}  // namespace

std::vector<Package> readNixPackages(Machine& machine) {
    std::vector<Package> packages;
    const std::string profiles = kNixProfiles;
    if (!machine.exists(profiles)) return packages;
    readNixProfile(machine, profiles + "default", &packages);
    for (const std::string& user : profilesIn(machine, profiles + "per-user"))
        readNixProfile(machine, user + "/profile", &packages);
    return withoutRepeats(std::move(packages));
}

std::vector<Package> readGuixPackages(Machine& machine) {
    std::vector<Package> packages;
    const std::string profiles = kGuixProfiles;
    if (!machine.exists(profiles)) return packages;
    std::vector<std::string> found = profilesIn(machine, profiles.substr(0, profiles.size() - 1));
    found.push_back(profiles + "system/profile");  // the system's own lies within it
    for (const std::string& user : profilesIn(machine, profiles + "per-user")) {
        for (const std::string& profile : profilesIn(machine, user)) found.push_back(profile);
    }
    for (const std::string& profile : found)
        readManifest(machine, profile + "/manifest", parseGuixManifest, &packages);
    return withoutRepeats(std::move(packages));
}
