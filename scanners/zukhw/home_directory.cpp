#include "scanners/zukhw/home_directory.h"

#include <algorithm>
#include <map>
#include <string>

#include "scanners/zukhw/file_system_kinds.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/mountinfo.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/text.h"

namespace {

// By the longest mount point above the path.
bool mayHang(Machine& machine, const std::string& path) {
    const Mount* nearest = nullptr;
    for (const Mount& mount : machine.shared<Mountinfo>().mounts()) {
        const std::size_t end = mount.point.size();
        const bool above =
            mount.point == "/" || (startsWith(path, mount.point) && (path.size() == end || path[end] == '/'));
        if (above && (nearest == nullptr || mount.point.size() >= nearest->point.size())) nearest = &mount;
    }
    return nearest != nullptr && canHang(nearest->type);
}

}  // namespace

LocalUsers::LocalUsers(Machine& machine) {
    std::map<std::string_view, bool> homes;  // those of services are often the same, or not there
    for (const Account& user : machine.shared<Accounts>().users()) {
        if (user.home.size() <= 1 || user.home.front() != '/') continue;
        const auto [home, isNew] = homes.emplace(user.home, false);
        if (isNew) home->second = !mayHang(machine, user.home) && machine.exists(user.home.substr(1));
        if (home->second) all.push_back(&user);
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Account* a, const Account* b) { return naturalLess(a->name, b->name); });
}
