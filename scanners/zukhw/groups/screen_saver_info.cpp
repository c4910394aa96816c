// Group "ScreenSaverInfo": one instance per user with settings of their own, and one for all ("*") where the
// system has some, by user name.
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/home_directory.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/screen_saver.h"

namespace {

constexpr char kLogind[] = "etc/systemd/logind.conf";

struct Program {
    const char* file;  // below the home directory
    ScreenSaverSettings (*parse)(std::string_view);
};
constexpr Program kPrograms[] = {{"/.xscreensaver", parseXScreenSaver},
                                 {"/.config/kscreenlockerrc", parseKScreenLocker}};

void writeSettings(const std::string& user, const ScreenSaverSettings& settings, const std::string& path,
                   GroupWriter& out) {
    out.beginInstance();
    out.text("UserName", user);
    out.text("Program", settings.program);
    out.boolean("Enabled", settings.enabled);
    out.number("TimeoutSeconds", settings.timeoutSeconds);
    out.boolean("LockEnabled", settings.lockEnabled);
    out.number("LockDelaySeconds", settings.lockDelaySeconds);
    out.text("Source", '/' + path);
}

void writeUser(Machine& machine, const Account& user, GroupWriter& out) {
    for (const Program& program : kPrograms) {
        const std::string path = user.home.substr(1) + program.file;
        const auto text = machine.read(path);
        if (text) return writeSettings(user.name, program.parse(*text), path, out);
    }
}

}  // namespace

void collectScreenSaverInfo(Machine& machine, GroupWriter& out) {
    const auto idle = parseLogindIdle(machine.text(kLogind));
    if (idle) writeSettings("*", *idle, kLogind, out);
    for (const Account* user : machine.shared<LocalUsers>().all) writeUser(machine, *user, out);
}
