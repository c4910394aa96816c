#include "scanners/shared/packages/database_readers.h"

namespace {

constexpr const char* kPlace = "var/lib/flatpak";
constexpr std::size_t kMaxMetainfo = std::size_t{1} << 20U;

// The version of the newest release in the description that software shops show; empty when it has none.
std::string_view releaseVersion(std::string_view metainfo) {
    constexpr std::string_view kRelease = "<release ";
    constexpr std::string_view kVersion = "version=\"";
    const auto begin = metainfo.find(kRelease);
    if (begin == std::string_view::npos) return {};
    const std::string_view tag = metainfo.substr(begin, metainfo.find('>', begin) - begin);
    const auto value = tag.find(kVersion);
    if (value == std::string_view::npos) return {};
    const std::string_view rest = tag.substr(value + kVersion.size());
    return rest.substr(0, rest.find('"'));
}

std::string versionOf(const RootedFs& fs, const std::string& active, const std::string& id) {
    const std::string share = active + "/files/share";
    for (const std::string& path : {pathOf({share, "metainfo", id}).append(".metainfo.xml"),
                                    pathOf({share, "appdata", id}).append(".appdata.xml")}) {
        std::string text;
        if (fs.read(path, &text, kMaxMetainfo) != ReadStatus::Ok) continue;
        if (const std::string_view version = releaseVersion(text); !version.empty())
            return std::string(version);
    }
    return "";
}

Package describe(const RootedFs& fs, const std::string& kind, const std::string& id,
                 const std::string& architecture, const std::string& branch) {
    const std::string active = pathOf({kPlace, kind, id, architecture, branch, "active"});
    Package package;
    package.manager = "flatpak";
    package.name = id;
    package.architecture = architecture;
    package.section = kind;
    package.path = active + "/metadata";
    package.version = versionOf(fs, active, id);
    if (package.version.empty()) package.version = branch;
    package.upstream = package.version;
    return package;
}

// Directories KIND/ID/ARCHITECTURE/BRANCH, and a link KIND/ID/current to one of them.
void readKind(const RootedFs& fs, const std::string& kind, PackageDatabase& database) {
    std::string problem;
    const std::string top = pathOf({kPlace, kind});
    for (const std::string& id : sortedNames(fs, top, &problem)) {
        for (const std::string& architecture : sortedNames(fs, pathOf({top, id}), &problem)) {
            if (architecture == "current") continue;
            for (const std::string& branch : sortedNames(fs, pathOf({top, id, architecture}), &problem)) {
                Package package = describe(fs, kind, id, architecture, branch);
                if (fs.exists(package.path)) database.list.packages.push_back(std::move(package));
            }
        }
    }
    addProblem(database, problem);
}

}  // namespace

// The branch counts as version where the application tells none.
std::optional<PackageDatabase> readFlatpak(const RootedFs& fs, const PackagePlaces& /*places*/) {
    PackageDatabase database;
    database.path = kPlace;
    if (!fs.exists(database.path)) return std::nullopt;
    readKind(fs, "app", database);
    readKind(fs, "runtime", database);
    return database;
}
