#include "scanners/zukhw/init_scripts.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kScripts[] = "etc/init.d";
constexpr char kRunLevels[] = "etc/runlevels";

// "S01ssh" in the directory of a run level that a system comes up to.
std::set<std::string> enabledForSystemV(Machine& machine) {
    constexpr std::size_t kPrefix = 3;
    std::set<std::string> enabled;
    for (const char* parent : {"etc/rc", "etc/rc.d/rc"}) {
        for (const char* level : {"2", "3", "4", "5", "S"}) {
            const std::string directory = std::string(parent) + level + ".d";
            if (!machine.exists(directory)) continue;
            for (const std::string& name : machine.list(directory)) {
                if (startsWith(name, "S") && name.size() > kPrefix) enabled.insert(name.substr(kPrefix));
            }
        }
    }
    return enabled;
}

std::set<std::string> enabledForOpenRc(Machine& machine) {
    std::set<std::string> enabled;
    for (const std::string& level : machine.list(kRunLevels)) {
        for (const std::string& name : machine.list(std::string(kRunLevels) + '/' + level))
            enabled.insert(name);
    }
    return enabled;
}

bool isProgram(Machine& machine, const std::string& path) {
    constexpr unsigned kExecute = 0111;
    const auto facts = machine.facts(path);
    return facts && facts->type == FileFacts::Type::Regular && (facts->mode & kExecute) != 0;
}

bool isHelper(const std::string& name) {
    static const std::set<std::string> kHelpers = {"README", "functions", "functions.sh",
                                                   "rc",     "rcS",       "skeleton"};
    return kHelpers.count(name) != 0 || name.find(".dpkg-") != std::string::npos;
}

// OpenRC: description="..."; others: a comment of a form that tools read.
std::string descriptionIn(std::string_view text) {
    const auto comment = findValue(text, "# Short-Description", ':');
    if (comment) return std::string(*comment);
    std::string_view value = findValue(text, "description", '=').value_or("");
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.substr(1, value.size() - 2);
    return std::string(value);
}

}  // namespace

std::vector<InitScript> readInitScripts(Machine& machine) {
    const bool openRc = machine.exists(kRunLevels);
    const std::set<std::string> enabled = openRc ? enabledForOpenRc(machine) : enabledForSystemV(machine);
    std::vector<InitScript> scripts;
    if (!machine.exists(kScripts)) return scripts;
    for (const std::string& name : machine.list(kScripts)) {
        const std::string path = std::string(kScripts) + '/' + name;
        if (isHelper(name) || !isProgram(machine, path)) continue;
        scripts.push_back(
            {name, path, descriptionIn(machine.read(path).value_or("")), openRc, enabled.count(name) != 0});
    }
    return scripts;
}
