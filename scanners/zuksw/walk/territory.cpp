#include "scanners/zuksw/walk/territory.h"

#include <algorithm>
#include <cerrno>
#include <optional>

#include "scanners/zuksw/walk/file_systems.h"

namespace zuksw {
namespace {

constexpr const char* kContainers =
    "/var/lib/{docker,containerd,containers/storage,kubelet/pods,lxd/storage-pools}";
constexpr const char* kExclude[] = {"**/.snapshots", "**/.zfs", "**/lost+found"};
constexpr const char* kDeny[] = {"/etc/{shadow,gshadow}*", "/etc/ssh/*_key", "**/.ssh/id_*", "**/.gnupg/**",
                                 "/proc/*/environ"};

// Takes "none" out of the list and says whether it was there.
bool takeNone(std::vector<std::string>* list) {
    const auto none = std::remove(list->begin(), list->end(), "none");
    const bool found = none != list->end();
    list->erase(none, list->end());
    return found;
}

std::vector<std::string> excludeList(const Configuration& configuration) {
    std::vector<std::string> globs = configuration.search.exclude;
    if (takeNone(&globs)) return globs;
    globs.insert(globs.end(), std::begin(kExclude), std::end(kExclude));
    if (!configuration.search.containers) globs.emplace_back(kContainers);
    return globs;
}

std::vector<std::string> denyList(const Configuration& configuration) {
    std::vector<std::string> globs = configuration.content.deny;
    if (!takeNone(&globs)) globs.insert(globs.end(), std::begin(kDeny), std::end(kDeny));
    return globs;
}

std::string withoutEndSlash(std::string path) {
    while (!path.empty() && path.back() == '/') path.pop_back();
    return path;
}

// The mount that a path lies on: of the longest point, the last mounted.
const Mount* mountOf(const std::string& path, const std::vector<Mount>& mounts) {
    const Mount* best = nullptr;
    std::size_t longest = 0;
    for (const Mount& mount : mounts) {
        const std::string point = withoutEndSlash(mount.point);
        if (!isAtOrBelow(path, point) || (best != nullptr && point.size() < longest)) continue;
        best = &mount;
        longest = point.size();
    }
    return best;
}

// Where the files of `mount` can also be seen through `other`; nothing when they cannot.
std::optional<std::string> seenThrough(const Mount& mount, const Mount& other) {
    const std::string inner = withoutEndSlash(mount.subtree);
    const std::string outer = withoutEndSlash(other.subtree);
    if (mount.device != other.device || !isAtOrBelow(inner, outer)) return std::nullopt;
    return withoutEndSlash(other.point) + inner.substr(outer.size());
}

}  // namespace

Territory::Territory(const Configuration& configuration, const FileTree& tree,
                     const std::vector<Mount>& mounts)
    : exclude_(excludeList(configuration)), deny_(denyList(configuration)) {
    findRoots(configuration, tree);
    judgeMounts(configuration, tree, mounts);
}

void Territory::findRoots(const Configuration& configuration, const FileTree& tree) {
    std::vector<std::string> wanted = configuration.search.roots;
    if (wanted.empty()) wanted = {"/"};
    std::vector<std::string> found;
    for (const std::string& root : wanted) {
        const std::optional<std::string> real = tree.resolve(root);
        const auto facts = real ? tree.stat(*real) : std::nullopt;
        if (facts && S_ISDIR(facts->st_mode)) {
            found.push_back(withoutEndSlash(*real));
        } else if (!facts && errno == EACCES) {
            found.push_back(withoutEndSlash(root));  // who searches it will find it closed
        } else {
            missingRoots_.push_back(root);
        }
    }
    std::sort(found.begin(), found.end());
    for (std::string& root : found) {
        const bool inside = std::any_of(roots_.begin(), roots_.end(),
                                        [&](const std::string& other) { return isAtOrBelow(root, other); });
        if (!inside) roots_.push_back(std::move(root));
    }
}

// Mounts are judged in the order in which they were made: what was there first is searched, and what shows
// the same files a second time is not.
void Territory::judgeMounts(const Configuration& configuration, const FileTree& tree,
                            const std::vector<Mount>& mounts) {
    const FileSystemChoice choice(configuration.search.fileSystems);
    const std::string& prefix = tree.realPrefix();
    std::vector<const Mount*> homes;  // what holds the roots is searched, whatever its type
    for (const std::string& root : roots_) {
        const Mount* home = mountOf(prefix + root, mounts);
        if (home != nullptr && !isKernelType(home->type)) homes.push_back(home);
    }
    const auto isHome = [&](const Mount& mount) {
        return std::any_of(homes.begin(), homes.end(),
                           [&](const Mount* h) { return h->device == mount.device; });
    };
    const auto isSearched = [&](const std::string& path) {  // a path of the running machine
        if (!isAtOrBelow(path, prefix)) return false;
        return contains(path.substr(prefix.size()));
    };
    std::vector<const Mount*> open;
    for (const Mount& mount : mounts) {
        const std::string point = withoutEndSlash(mount.point);
        const bool again = std::any_of(open.begin(), open.end(), [&](const Mount* other) {
            const std::optional<std::string> twin = seenThrough(mount, *other);
            return twin && *twin != point && isSearched(*twin) && mountOf(*twin, mounts) == other;
        });
        const bool isForeign = !choice.accepts(mount.type) && !isHome(mount);
        const bool isOpen = !again && !isForeign;
        if (isOpen) open.push_back(&mount);
        if (!isAtOrBelow(point, prefix) || point.size() <= prefix.size()) continue;
        // A later mount hides an earlier one at the same point.
        const std::string place = point.substr(prefix.size());
        closedMounts_.erase(place);
        foreignMounts_.erase(place);
        if (!isOpen) closedMounts_.insert(place);
        if (isForeign) foreignMounts_.insert(place);
    }
    for (const std::string& root : roots_) closedMounts_.erase(root);
}

bool Territory::enters(std::string_view directory) const {
    if (exclude_.contains(directory)) return false;
    return closedMounts_.empty() || closedMounts_.count(std::string(directory)) == 0;
}

bool Territory::isPassable(std::string_view directory) const {
    const bool isAboveRoot = std::any_of(roots_.begin(), roots_.end(),
                                         [&](const std::string& r) { return isAtOrBelow(r, directory); });
    return isAboveRoot ||
           (!exclude_.contains(directory) && foreignMounts_.count(std::string(directory)) == 0);
}

bool Territory::contains(std::string_view path) const {
    const auto root = std::find_if(roots_.begin(), roots_.end(),
                                   [&](const std::string& r) { return isAtOrBelow(path, r); });
    if (root == roots_.end()) return false;
    for (std::size_t slash = path.find('/', root->size() + 1); slash != path.npos;
         slash = path.find('/', slash + 1)) {
        if (!enters(path.substr(0, slash))) return false;
    }
    return path.size() == root->size() || enters(path);
}

}  // namespace zuksw
