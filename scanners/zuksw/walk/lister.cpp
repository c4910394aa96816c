#include "scanners/zuksw/walk/lister.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace zuksw {
namespace {

void addUnreadable(const Walker::Places& places, const std::string& path, int error) {
    const bool denied = error == EACCES || error == EPERM;
    places.events.add(EventCode::kUnreadable, {},
                      denied ? "permission denied; directories not searched" : "directories cannot be read",
                      path.empty() ? "/" : path);
}

}  // namespace

// Directories above a root may be listed on the way to it.
bool Lister::mayList(const std::string& directory) const {
    const auto& roots = places_.territory.roots();
    if (std::any_of(roots.begin(), roots.end(),
                    [&](const auto& root) { return isAtOrBelow(root, directory); })) {
        return true;
    }
    return places_.territory.contains(directory);
}

std::vector<std::string> Lister::list(const std::string& base, const GlobSteps& steps) {
    found_.clear();
    open_.push_back({base, 0, 0});
    while (!open_.empty()) {
        const Place place = std::move(open_.back());
        open_.pop_back();
        visit(place, steps);
    }
    std::sort(found_.begin(), found_.end());
    found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
    return std::move(found_);
}

void Lister::visit(const Place& place, const GlobSteps& steps) {
    const GlobStep& step = steps[place.step];
    if (step.anyDirectories) {
        open_.push_back({place.directory, place.step + 1, place.depth});
        list(place, steps);
        return;
    }
    if (!step.name.isLiteral()) return list(place, steps);
    const std::string& name = step.name.prefix();
    std::string path = place.directory;
    if (name == "..") {
        path.resize(path.empty() ? 0 : path.rfind('/'));
    } else {
        path += "/" + name;
    }
    if (place.step + 1 == steps.size()) {
        if (places_.territory.contains(path)) found_.push_back(std::move(path));
    } else {
        open_.push_back({std::move(path), place.step + 1, place.depth});
    }
}

void Lister::list(const Place& place, const GlobSteps& steps) {
    if (places_.budget.isSpent()) causes_ |= toCauses(Cause::kTimeBudget);
    if (causes_ & toCauses(Cause::kTimeBudget) || !mayList(place.directory)) return;
    const auto known = listings_.find(place.directory);
    if (!known) return readDirectory(place, steps);
    for (const Listings::Entry& entry : *known) visitEntry(place, steps, entry.name, entry.type);
}

void Lister::readDirectory(const Place& place, const GlobSteps& steps) {
    FileDescriptor fd = places_.tree.openAt(place.directory, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (!fd.valid()) {
        if (errno == ENOENT || errno == ENOTDIR || errno == ELOOP) return;
        causes_ |= toCauses(Cause::kUnreadable);
        return addUnreadable(places_, place.directory, errno);
    }
    if (buffer_.empty()) buffer_ = DirectoryReader::makeBuffer();
    DirectoryReader reader(std::move(fd), &buffer_);
    DirectoryReader::Entry entry = {};
    Listings::Listing listing;
    while (reader.next(&entry)) {
        const unsigned char type =
            entry.type == DT_UNKNOWN ? typeOfEntry(reader.descriptor(), entry.name) : entry.type;
        visitEntry(place, steps, entry.name, type);
        if (listing.size() <= Listings::kLongest) listing.push_back({std::string(entry.name), type});
    }
    const bool isWhole = reader.error() == 0 && listing.size() <= Listings::kLongest;
    if (isWhole) listings_.keep(place.directory, std::move(listing));
}

void Lister::visitEntry(const Place& place, const GlobSteps& steps, std::string_view name,
                        unsigned char type) {
    const GlobStep& step = steps[place.step];
    if (!step.anyDirectories && !step.name.matches(name)) return;
    std::string path = place.directory + "/" + std::string(name);
    if (place.step + 1 == steps.size()) {
        if (places_.territory.contains(path)) found_.push_back(std::move(path));
        return;
    }
    if (type != DT_DIR || !places_.territory.enters(path)) return;
    if (place.depth >= places_.configuration.search.maxDepth) {
        causes_ |= toCauses(Cause::kNotSearched);
        return;
    }
    const std::size_t next = step.anyDirectories ? place.step : place.step + 1;
    open_.push_back({std::move(path), next, place.depth + 1});
}

}  // namespace zuksw
