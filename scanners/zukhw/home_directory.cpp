#include "scanners/zukhw/home_directory.h"

#include <algorithm>
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
        const bool above = mount.point == "/" || startsWith(path + '/', mount.point + '/');
        if (above && (nearest == nullptr || mount.point.size() >= nearest->point.size())) nearest = &mount;
    }
    return nearest != nullptr && canHang(nearest->type);
}

}  // namespace

std::vector<const Account*> usersWithLocalHome(Machine& machine) {
    std::vector<const Account*> users;
    for (const Account& user : machine.shared<Accounts>().users()) {
        const bool hasHome = user.home.size() > 1 && user.home.front() == '/';
        if (hasHome && !mayHang(machine, user.home)) users.push_back(&user);
    }
    std::stable_sort(users.begin(), users.end(),
                     [](const Account* a, const Account* b) { return naturalLess(a->name, b->name); });
    return users;
}
