// Group "ScreenSaverInfo": one instance per user with settings of their own, and one for all ("*") where the
// system has some, by user name.
#include <algorithm>
#include <string>
#include <vector>

#include "scanners/zukhw/accounts.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/file_system_kinds.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/mountinfo.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/screen_saver.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kLogind = "/etc/systemd/logind.conf";

struct Program {
    const char* file;  // below the home directory
    ScreenSaverSettings (*parse)(std::string_view);
};
constexpr Program kPrograms[] = {{"/.xscreensaver", parseXScreenSaver},
                                 {"/.config/kscreenlockerrc", parseKScreenLocker}};

// Whether the path lies on a file system that may never answer: that of the longest mount point above it.
bool mayHang(Machine& machine, const std::string& path) {
    const Mount* nearest = nullptr;
    for (const Mount& mount : machine.shared<Mountinfo>().mounts()) {
        const bool above = mount.point == "/" || startsWith(path + '/', mount.point + '/');
        if (above && (nearest == nullptr || mount.point.size() >= nearest->point.size())) nearest = &mount;
    }
    return nearest != nullptr && canHang(nearest->type);
}

void writeSettings(const std::string& user, const ScreenSaverSettings& settings, std::string_view source,
                   GroupWriter& out) {
    out.beginInstance();
    out.text("UserName", user);
    out.text("Program", settings.program);
    out.boolean("Enabled", settings.enabled);
    out.number("TimeoutSeconds", settings.timeoutSeconds);
    out.boolean("LockEnabled", settings.lockEnabled);
    out.number("LockDelaySeconds", settings.lockDelaySeconds);
    out.text("Source", source);
}

void writeUser(Machine& machine, const Account& user, GroupWriter& out) {
    if (user.home.size() < 2 || user.home.front() != '/' || mayHang(machine, user.home)) return;
    for (const Program& program : kPrograms) {
        const std::string path = user.home + program.file;
        const auto text = machine.read(path);
        if (text) return writeSettings(user.name, program.parse(*text), path, out);
    }
}

}  // namespace

void collectScreenSaverInfo(Machine& machine, GroupWriter& out) {
    const auto idle = parseLogindIdle(machine.text(kLogind));
    if (idle) writeSettings("*", *idle, kLogind, out);
    std::vector<const Account*> users;
    for (const Account& user : machine.shared<Accounts>().users()) users.push_back(&user);
    std::stable_sort(users.begin(), users.end(),
                     [](const Account* a, const Account* b) { return naturalLess(a->name, b->name); });
    for (const Account* user : users) writeUser(machine, *user, out);
}
