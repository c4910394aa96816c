#include <string>
#include <string_view>

#include "scanners/shared/packages/dpkg.h"
#include "scanners/shared/random_access.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/text_pieces.h"

namespace {

constexpr char kDirectory[] = "var/lib/dpkg/";
constexpr std::uint64_t kUsualParagraph = 800;  // bytes of the status file

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
    packages->reserve(static_cast<std::size_t>(file.size() / kUsualParagraph));
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
class FileLists {
  public:
    explicit FileLists(Machine& machine) : machine_(machine), path_(std::string(kDirectory) + "info") {
        machine.files().stayIn(path_);
        path_ += '/';
    }

    // It is named with the architecture where packages of several can be installed side by side.
    std::optional<std::int64_t> timeOf(const Package& package) {
        const bool sideBySide = package.multiArch == "same";
        const auto time = timeOf(package, sideBySide);
        return time ? time : timeOf(package, !sideBySide);
    }

  private:
    std::optional<std::int64_t> timeOf(const Package& package, bool withArchitecture) {
        const std::size_t directory = path_.size();
        path_ += package.name;
        if (withArchitecture) path_.append(":").append(package.architecture);
        const auto facts = machine_.facts(path_.append(".list"));
        path_.resize(directory);
        return facts ? std::optional(facts->modified) : std::nullopt;
    }

    Machine& machine_;
    std::string path_;  // kept for its memory
};

}  // namespace

std::vector<Package> readDpkgPackages(Machine& machine) {
    std::vector<Package> packages;
    readStatusFile(machine, &packages);
    readStatusDirectory(machine, &packages);
    if (packages.empty()) return packages;
    FileLists lists(machine);
    for (Package& package : packages) package.installTime = lists.timeOf(package);
    const auto aptStates = machine.read("var/lib/apt/extended_states", Machine::kTable);
    if (aptStates) markAutomatic(*aptStates, packages);
    return packages;
}
