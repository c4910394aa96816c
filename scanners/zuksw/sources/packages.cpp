#include "scanners/zuksw/sources/packages.h"

#include <algorithm>

#include "scanners/shared/packages/databases.h"
#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/index/string_table.h"
#include "scanners/zuksw/sources/language_packages.h"

namespace zuksw {
namespace {

std::uint64_t hashOf(std::string_view path) {
    ByteHash hash;
    for (const char c : path) hash.add(c);
    return hash.value();
}

RootedFs filesOf(const Machine& machine) {
    if (!machine.tree.isWholeMachine()) {
        std::optional<RootedFs> fs = RootedFs::below(machine.configuration.system.prefix);
        if (fs) return *std::move(fs);
    }
    return RootedFs::ofLiveMachine();
}

PackagePlaces placesOf(const Configuration& configuration) {
    const auto& packages = configuration.packages;
    return {packages.dpkgDir, packages.apkDir, packages.rpmDir, packages.pacmanDir};
}

void add(Package package, std::string group, ManagerPackages* packages) {
    packages->all.push_back(std::make_shared<const PackageObject>(std::move(package), std::move(group)));
    packages->byName[packages->all.back()->package().name].push_back(packages->all.size() - 1);
}

}  // namespace

const std::vector<std::string_view>& Packages::machineManagers() {
    static const std::vector<std::string_view> kManagers = packageManagers();
    return kManagers;
}

const std::vector<std::string_view>& Packages::managers() {
    static const std::vector<std::string_view> kManagers = [] {
        std::vector<std::string_view> all = machineManagers();
        for (const LanguageManager& manager : languageManagers()) all.push_back(manager.name);
        return all;
    }();
    return kManagers;
}

bool Packages::isWanted(std::string_view manager, const Machine& machine) {
    const std::vector<std::string>& wanted = machine.configuration.packages.managers;
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), manager) != wanted.end();
}

void Packages::demand(std::string_view manager, std::vector<FileQuery>* queries) {
    const LanguageManager* language = findLanguageManager(manager);
    if (language != nullptr) queries->push_back(language->query());
}

void Packages::readDatabases(Machine& machine) {
    databasesRead_ = true;
    std::vector<std::string> wanted;
    for (const std::string_view manager : machineManagers()) {
        if (isWanted(manager, machine)) wanted.emplace_back(manager);
    }
    if (wanted.empty()) return;
    for (PackageDatabase& database :
         readPackageDatabases(filesOf(machine), placesOf(machine.configuration), wanted)) {
        ManagerPackages& packages = managers_[database.manager];
        std::string problem = database.problem;
        if (problem.empty() && database.list.broken > 0) {
            problem = std::to_string(database.list.broken) + " entries are damaged";
        }
        if (!problem.empty()) {
            machine.events.add(EventCode::kPackageDb, {}, std::string(database.manager) + ": " + problem,
                               "/" + database.path);
            packages.causes |= toCauses(Cause::kPackageDb);
        }
        for (Package& package : database.list.packages) {
            if (!package.path.empty()) package.path.insert(0, "/");
            add(std::move(package), {}, &packages);
        }
    }
}

void Packages::readWalked(std::string_view manager, Machine& machine, ManagerPackages* packages) {
    if (!isWanted(manager, machine)) return;
    const LanguageManager& language = *findLanguageManager(manager);
    const FoundFiles& files = machine.files.walked(language.query());
    packages->causes = files.causes;
    for (const auto& file : files.files) {
        packages->causes |= language.read(file, machine, [&](Package package, std::string group) {
            package.manager = language.name;
            if (package.path.empty()) package.path = file->path();
            add(std::move(package), std::move(group), packages);
        });
    }
}

const ManagerPackages& Packages::of(std::string_view manager, Machine& machine) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const LanguageManager* language = findLanguageManager(manager);
    if (language != nullptr) {
        const auto [entry, isNew] = managers_.try_emplace(language->name);
        if (isNew) readWalked(language->name, machine, &entry->second);
        return entry->second;
    }
    if (!databasesRead_) readDatabases(machine);
    return managers_[*std::find(machineManagers().begin(), machineManagers().end(), manager)];
}

void Packages::readOwners(Machine& machine) {
    std::unordered_map<std::string, std::uint32_t> numbers;
    const auto take = [&](std::string_view path, std::string_view package) {
        const auto [entry, isNew] =
            numbers.emplace(std::string(package), static_cast<std::uint32_t>(ownerNames_.size()));
        if (isNew) ownerNames_.emplace_back(package);
        owners_.emplace_back(hashOf(path), entry->second);
    };
    std::vector<std::string> wanted;
    for (const std::string_view manager : machineManagers()) {
        if (isWanted(manager, machine)) wanted.emplace_back(manager);
    }
    if (wanted.empty()) return;
    for (const std::string& problem :
         forEachOwnedPath(filesOf(machine), placesOf(machine.configuration), wanted, take)) {
        machine.events.add(EventCode::kPackageDb, {}, "lists of files: " + problem);
        ownerCauses_ |= toCauses(Cause::kPackageDb);
    }
    std::stable_sort(owners_.begin(), owners_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
}

Text Packages::ownerOf(const std::string& path, Machine& machine) {
    std::call_once(ownersOnce_, [&] { readOwners(machine); });
    const std::uint64_t hash = hashOf(path);
    const auto found = std::lower_bound(owners_.begin(), owners_.end(), hash,
                                        [](const auto& owner, std::uint64_t h) { return owner.first < h; });
    if (found != owners_.end() && found->first == hash) return Text::of(ownerNames_[found->second]);
    return ownerCauses_ == 0 ? Text() : Text::unknown(ownerCauses_);
}

}  // namespace zuksw
