#include "scanners/zukhw/container.h"

#include <algorithm>

#include "scanners/zukhw/host_identity.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/os_release.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::size_t kIdLength = 64;
constexpr std::size_t kShortIdLength = 12;

// What one file says; the name may be empty.
struct Finding {
    std::string source;
    std::string name;
};

struct NamePair {
    std::string_view given;
    std::string_view name;
};

// By the value that container managers give to their first process.
std::string nameOfManager(std::string_view value) {
    static constexpr NamePair kNames[] = {
        {"docker", "Docker"},        {"podman", "Podman"}, {"lxc", "LXC"},
        {"lxc-libvirt", "LXC"},      {"openvz", "OpenVZ"}, {"wsl", "WSL"},
        {"pouch", "PouchContainer"},
    };
    for (const NamePair& pair : kNames) {
        if (pair.given == value) return std::string(pair.name);
    }
    return std::string(value);  // systemd-nspawn, rkt, proot, ...
}

// By the place of a process in the hierarchy of control groups.
constexpr NamePair kCgroups[] = {
    {"/libpod", "Podman"},
    {"/docker/", "Docker"},
    {"/docker-", "Docker"},
    {"/kubepods", "Kubernetes"},
    {"/lxc/", "LXC"},
    {"/lxc.payload", "LXC"},
    {"systemd-nspawn", "systemd-nspawn"},
    {"/machine.slice/machine-", "systemd-nspawn"},
    {"/machine.slice", ""},
};

// A manager's note to its first process, which only root may read: not to be allowed is the normal case.
std::string firstProcessNote(Machine& machine) {
    std::string environment;
    machine.files().read("proc/1/environ", &environment, Machine::kAttribute);
    for (const std::string_view variable : split(environment, '\0')) {
        constexpr std::string_view kNote = "container=";
        if (startsWith(variable, kNote)) return std::string(variable.substr(kNote.size()));
    }
    return "";
}

void askManagers(Machine& machine, std::vector<Finding>* findings) {
    const std::string noted = machine.text("run/systemd/container");
    if (!noted.empty()) findings->push_back({"/run/systemd/container", nameOfManager(noted)});
    const std::string note = firstProcessNote(machine);
    if (!note.empty()) findings->push_back({"/proc/1/environ", nameOfManager(note)});
    if (machine.exists(".dockerenv")) findings->push_back({"/.dockerenv", "Docker"});
}

// engine="podman-4.3.1", id="..."; empty when the container may not know.
void askPodman(Machine& machine, Container* container, std::vector<Finding>* findings) {
    constexpr std::string_view kEngine = "podman-";
    if (!machine.exists("run/.containerenv")) return;
    findings->push_back({"/run/.containerenv", "Podman"});
    const auto values = parseOsRelease(machine.text("run/.containerenv"));
    const auto engine = values.find("engine");
    const auto id = values.find("id");
    if (engine != values.end() && startsWith(engine->second, kEngine)) {
        container->version = engine->second.substr(kEngine.size());
    }
    if (id != values.end()) container->id = id->second;
}

// The first run of 64 hex digits, which is how container managers name their control groups.
std::string longId(std::string_view text) {
    std::size_t length = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i < text.size() && kHexDigits.find(text[i]) != std::string_view::npos) {
            ++length;
            continue;
        }
        if (length == kIdLength) return std::string(text.substr(i - length, length));
        length = 0;
    }
    return "";
}

void askCgroups(Machine& machine, Container* container, std::vector<Finding>* findings) {
    for (const char* path : {"proc/1/cgroup", "proc/self/cgroup"}) {
        const std::string cgroups = machine.text(path);
        for (const NamePair& cgroup : kCgroups) {
            if (cgroups.find(cgroup.given) == std::string::npos) continue;
            findings->push_back({'/' + std::string(path), std::string(cgroup.name)});
            if (container->id.empty()) container->id = longId(cgroups);
            return;
        }
    }
}

// Kernels patched for containers tell a process which one it is in; 0 is the host.
void askPatchedKernels(Machine& machine, std::vector<Finding>* findings) {
    if (machine.exists("proc/vz") && !machine.exists("proc/bc")) findings->push_back({"/proc/vz", "OpenVZ"});
    const std::string status = machine.text("proc/self/status");
    static constexpr NamePair kIds[] = {{"VxID", "Linux-VServer"}, {"envID", "OpenVZ"}};
    for (const NamePair& id : kIds) {
        const auto number = parseDecimal(findValue(status, id.given, ':').value_or(""));
        if (number && *number != 0) findings->push_back({"/proc/self/status", std::string(id.name)});
    }
}

void askKernelName(Machine& machine, std::vector<Finding>* findings) {
    const std::string release = machine.text("proc/sys/kernel/osrelease");
    const bool isWsl = release.find("WSL") != std::string::npos || endsWith(release, "-Microsoft") ||
                       endsWith(release, "-microsoft-standard");
    if (isWsl) findings->push_back({"/proc/sys/kernel/osrelease", "WSL"});
}

bool isShortId(std::string_view name) {
    return name.size() == kShortIdLength && name.find_first_not_of(kHexDigits) == std::string_view::npos;
}

}  // namespace

Container::Container(Machine& machine) {
    std::vector<Finding> findings;
    askManagers(machine, &findings);
    askPodman(machine, this, &findings);
    askPatchedKernels(machine, &findings);
    askCgroups(machine, this, &findings);
    askKernelName(machine, &findings);
    found = !findings.empty();
    if (!found) return;
    for (const Finding& finding : findings) {
        if (name.empty()) name = finding.name;
    }
    for (const Finding& finding : findings) {
        if (finding.name == name || finding.name.empty()) evidence.push_back(finding.source);
    }
    // Docker and Podman name a container's host by the head of its identity, unless told otherwise.
    const std::string& host = machine.shared<HostIdentity>().name;
    const bool namesHosts = name == "Docker" || name == "Podman";
    if (id.empty() && namesHosts && isShortId(host)) id = host;
}
