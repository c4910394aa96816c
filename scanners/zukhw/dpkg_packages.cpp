#include <string>

#include "scanners/shared/packages/dpkg.h"
#include "scanners/shared/random_access.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/text_pieces.h"

namespace {

constexpr char kDirectory[] = "var/lib/dpkg/";

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

// Passes on the packages that are installed, with what other files than their own tell about them.
class Installed {
  public:
    Installed(Machine& machine, const TakePackage& take) : machine_(machine), take_(take) {}

    void pass(Package& package) {
        if (package.state != PackageState::Installed) return;
        if (!others_) others_.emplace(machine_);  // not read where nothing is installed
        package.installTime = others_->lists.timeOf(package);
        package.automatic = others_->automatic.contains(package);
        take_(package);
    }

  private:
    struct Others {
        explicit Others(Machine& machine)
            : aptStates(machine.read("var/lib/apt/extended_states", Machine::kTable).value_or("")),
              automatic(aptStates),
              lists(machine) {}

        std::string aptStates;
        AutomaticPackages automatic;
        FileLists lists;
    };

    Machine& machine_;
    const TakePackage& take_;
    std::optional<Others> others_;
};

void readStatusFile(Machine& machine, Installed& installed) {
    const std::string path = std::string(kDirectory) + "status";
    const FileAccess file(machine.open(path));
    if (file.size() > Machine::kTable) return;
    for (TextPieces paragraphs(file, "\n\n"); paragraphs.next();) {
        machine.deadline().check();
        StatusReader reader = readDpkgStatus(paragraphs.text());
        for (Package package; reader.next(&package);) installed.pass(package);
        if (reader.broken() == 0) continue;
        machine.sources().malformed(path,
                                    static_cast<std::size_t>(paragraphs.offset()) + reader.firstBroken());
    }
}

// Images without dpkg keep a file for each package.
void readStatusDirectory(Machine& machine, Installed& installed) {
    const std::string directory = std::string(kDirectory) + "status.d";
    if (!machine.exists(directory)) return;
    for (const std::string& name : machine.list(directory)) {
        if (endsWith(name, ".md5sums")) continue;
        const std::string path = std::string(directory).append("/").append(name);
        const auto text = machine.read(path);
        if (!text) continue;
        PackageList list = parseDpkgControl(*text);
        if (list.broken != 0) machine.sources().malformed(path, list.firstBroken);
        for (Package& package : list.packages) installed.pass(package);
    }
}

}  // namespace

void readDpkgPackages(Machine& machine, const TakePackage& take) {
    Installed installed(machine, take);
    readStatusFile(machine, installed);
    readStatusDirectory(machine, installed);
}
