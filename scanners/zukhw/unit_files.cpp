#include "scanners/zukhw/unit_files.h"

#include <algorithm>
#include <map>
#include <set>

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kSuffix = ".service";
constexpr std::string_view kGenerated = "run/systemd/generator";

// Where units are looked for, the highest first; what enables units is in the first three: an administrator's
// links, and those of generators for the instances that they find configured.
constexpr const char* kDirectories[] = {"etc/systemd/system",        "run/systemd/system",
                                        "run/systemd/generator",     "usr/local/lib/systemd/system",
                                        "usr/lib/systemd/system",    "lib/systemd/system",
                                        "run/systemd/generator.late"};
constexpr std::size_t kEnabling = 3;

struct Found {
    std::string path;
    std::string linkTarget;  // empty for a file
};

struct Units {
    std::map<std::string, Found> byName;  // templates included
    std::set<std::string> enabled;
    std::map<std::string, std::vector<std::string>> dropIns;  // "ssh.service.d" and where there is one
};

bool isService(std::string_view name) {
    return endsWith(name, kSuffix) && name.size() > kSuffix.size();
}

bool isTemplate(std::string_view name) {
    return endsWith(name, "@.service");
}

// "getty@.service" of "getty@tty1.service"; empty when it is no instance.
std::string templateOf(std::string_view name) {
    const std::size_t at = name.find('@');
    return at == std::string_view::npos ? "" : std::string(name.substr(0, at + 1)).append(kSuffix);
}

bool isMasked(const Found& found) {
    return found.linkTarget == "/dev/null";
}

bool isAlias(const std::string& name, const Found& found) {
    return !found.linkTarget.empty() && !isMasked(found) && baseName(found.linkTarget) != name;
}

void readDirectory(Machine& machine, const std::string& directory, bool enabling, Units* units) {
    const std::string start = directory + '/';
    std::vector<std::string> links;
    const std::vector<std::string> names = machine.listUnordered(directory, &links);
    std::sort(links.begin(), links.end());
    for (const std::string& name : names) {
        const std::string path = start + name;
        if (enabling && (endsWith(name, ".wants") || endsWith(name, ".requires"))) {
            for (const std::string& wanted : machine.listUnordered(path)) {
                if (isService(wanted)) units->enabled.insert(wanted);
            }
        }
        if (name == "service.d" || endsWith(name, ".service.d")) units->dropIns[name].push_back(path);
        if (!isService(name)) continue;
        const bool mayBeLink = std::binary_search(links.begin(), links.end(), name);
        const Found found{path, mayBeLink ? machine.link(path) : ""};
        // A second name that was given to a unit enables it.
        if (enabling && isAlias(name, found)) units->enabled.emplace(baseName(found.linkTarget));
        units->byName.emplace(name, found);
    }
}

StartMode modeOf(const std::string& name, const Found& found, const UnitFacts& facts, const Units& units) {
    if (startsWith(found.path, kGenerated)) return StartMode::Generated;
    if (units.enabled.count(name) != 0) return StartMode::Enabled;
    return facts.installable ? StartMode::Disabled : StartMode::Static;
}

// The directories whose settings are added to those of a unit, the closest first: of its own name, of its
// template, of each prefix that ends in a hyphen, and of all services.
std::vector<std::string> dropInNames(const std::string& name) {
    std::vector<std::string> names = {name + ".d"};
    if (!templateOf(name).empty()) names.push_back(templateOf(name) + ".d");
    for (std::size_t hyphen = name.rfind('-'); hyphen != std::string::npos && hyphen > 0;
         hyphen = name.rfind('-', hyphen - 1))
        names.push_back(name.substr(0, hyphen + 1).append(kSuffix).append(".d"));
    names.emplace_back("service.d");
    return names;
}

// Settings that were dropped in come behind those of the unit itself, in the order of their files' names. Of
// files with the same name the one of the closest, then of the highest directory counts.
void addDropIns(Machine& machine, const Units& units, const std::string& name, UnitFacts* facts) {
    std::map<std::string, std::string> paths;  // by the file's name
    for (const std::string& dropIn : dropInNames(name)) {
        const auto found = units.dropIns.find(dropIn);
        if (found == units.dropIns.end()) continue;
        for (const std::string& directory : found->second) {
            const std::string start = directory + '/';
            for (const std::string& file : machine.list(directory)) {
                if (endsWith(file, ".conf")) paths.emplace(file, start + file);
            }
        }
    }
    const bool installable = facts->installable;
    for (const auto& [file, path] : paths) addUnitFile(machine.read(path).value_or(""), facts);
    facts->installable = installable;  // how a unit is enabled cannot be dropped in
}

ServiceUnit readUnit(Machine& machine, const std::string& name, const Found& found, const Units& units) {
    ServiceUnit unit{name, found.path, StartMode::Masked, {}};
    if (isMasked(found)) return unit;
    if (isAlias(name, found)) {
        unit.mode = StartMode::Alias;
        return unit;
    }
    machine.files().stayIn(parentPath(found.path));
    const auto text = machine.read(found.path);
    if (text && text->empty()) return unit;  // an empty file masks like the link
    addUnitFile(text.value_or(""), &unit.facts);
    addDropIns(machine, units, name, &unit.facts);
    unit.mode = modeOf(name, found, unit.facts, units);
    return unit;
}

// The program in "-/usr/bin/x --option": signs of how to start it stand before, quotes around it.
std::string executableOf(std::string_view command) {
    command.remove_prefix(std::min(command.find_first_not_of("@-:+!|"), command.size()));
    if (!command.empty() && (command[0] == '"' || command[0] == '\'')) {
        return std::string(command.substr(1, command.find(command[0], 1) - 1));
    }
    return std::string(command.substr(0, command.find_first_of(" \t")));
}

void setField(UnitFacts* facts, std::string_view section, std::string_view key, std::string_view value) {
    if (section == "[Unit]" && key == "Description") facts->description = value;
    if (section != "[Service]") return;
    if (key == "User") facts->user = value;
    if (key == "Type") facts->type = value;
    // Nothing takes back what was set before.
    if (key == "ExecStart" && (value.empty() || facts->executable.empty()))
        facts->executable = executableOf(value);
}

}  // namespace

void addUnitFile(std::string_view text, UnitFacts* facts) {
    std::string_view section;
    bool continues = false;  // the line before ended with a backslash: its start alone is of interest
    for (const std::string_view whole : lines(text)) {
        const std::string_view line = trim(whole);
        const bool continued = continues;
        const bool comment = startsWith(line, "#") || startsWith(line, ";");
        if (!comment) continues = endsWith(line, "\\");
        if (comment || continued) continue;
        if (startsWith(line, "[")) section = line;
        if (section == "[Install]") facts->installable = true;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        std::string_view value = line.substr(equals + 1);
        if (continues) value.remove_suffix(1);
        setField(facts, section, trim(line.substr(0, equals)), trim(value));
    }
}

std::vector<ServiceUnit> readServiceUnits(Machine& machine) {
    Units units;
    std::set<std::string> read;  // /lib is a link to /usr/lib on most machines
    for (std::size_t i = 0; i < std::size(kDirectories); ++i) {
        const std::string place = machine.resolve(kDirectories[i]);
        if (!place.empty() && !read.insert(place).second) continue;
        readDirectory(machine, kDirectories[i], i < kEnabling, &units);
    }
    std::vector<ServiceUnit> services;
    for (const auto& [name, found] : units.byName) {
        if (!isTemplate(name)) services.push_back(readUnit(machine, name, found, units));
    }
    for (const std::string& name : units.enabled) {
        const auto found = units.byName.find(templateOf(name));
        if (found == units.byName.end() || isTemplate(name) || units.byName.count(name) != 0) continue;
        services.push_back(readUnit(machine, name, {found->second.path, ""}, units));
    }
    return services;
}
