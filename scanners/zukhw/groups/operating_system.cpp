// Group "OperatingSystem": one instance, the distribution by its release files and the kernel by /proc.
#include <gnu/libc-version.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <string>

#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/host_identity.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/proc_stat.h"
#include "scanners/zukhw/release_files.h"
#include "scanners/zukhw/text.h"

namespace {

void writeRelease(Machine& machine, GroupWriter& out) {
    static constexpr std::pair<const char*, const char*> kFields[] = {
        {"Name", "NAME"},
        {"PrettyName", "PRETTY_NAME"},
        {"Id", "ID"},
        {"IdLike", "ID_LIKE"},
        {"Version", "VERSION"},
        {"VersionId", "VERSION_ID"},
        {"Codename", "VERSION_CODENAME"},
        {"Variant", "VARIANT"},
        {"BuildId", "BUILD_ID"},
    };
    const std::map<std::string, std::string> release = readReleaseFiles(machine);
    for (const auto& [field, variable] : kFields) {
        const auto value = release.find(variable);
        if (value != release.end()) out.text(field, value->second);
    }
    // The point releases of one Debian version share an os-release file; testing has a name here.
    const std::string debian = machine.text("etc/debian_version");
    if (!debian.empty() && debian[0] >= '0' && debian[0] <= '9') out.text("PointRelease", debian);
}

// The name that /etc/hosts gives this host with its domain.
std::string fullNameInHosts(Machine& machine, const std::string& host) {
    const std::string hosts = machine.read("etc/hosts", Machine::kTable).value_or("");
    for (std::string_view line : lines(hosts)) {
        line = line.substr(0, line.find('#'));
        const std::vector<std::string_view> names = words(line);
        if (std::find(names.begin(), names.end(), host) == names.end()) continue;
        const auto isFull = [](std::string_view name) {
            return name.find('.') != std::string_view::npos && !startsWith(name, "localhost");
        };
        const auto full = std::find_if(names.begin() + 1, names.end(), isFull);
        if (full != names.end()) return std::string(*full);
    }
    return "";
}

void writeNames(Machine& machine, GroupWriter& out) {
    const std::string& host = machine.shared<HostIdentity>().name;
    const std::string domain = machine.text("proc/sys/kernel/domainname");
    out.text("HostName", host);
    if (domain != "(none)") out.text("Domain", domain);
    if (host.empty()) return;
    out.text("Fqdn", host.find('.') != std::string::npos ? host : fullNameInHosts(machine, host));
}

void writeIdentity(Machine& machine, GroupWriter& out) {
    out.text("MachineId", machine.shared<HostIdentity>().machineId);
    out.text("BootId", machine.text("proc/sys/kernel/random/boot_id"));
    const auto bootTime = machine.shared<ProcStat>().value("btime");
    if (bootTime && *bootTime <= INT64_MAX) {
        out.text("BootTime", utcTime(static_cast<std::int64_t>(*bootTime)));
    }
    const std::string uptime = machine.text("proc/uptime");
    out.number("UptimeSeconds", parseDecimal(uptime.substr(0, uptime.find('.'))));
}

// The oldest of the traces that an installation leaves. A copy's own time stamps tell when it was copied.
void writeInstallDate(Machine& machine, GroupWriter& out) {
    constexpr std::int64_t kYear2000 = 946684800;  // older ones are clocks that were never set
    if (!machine.live()) return;
    std::int64_t oldest = std::time(nullptr) + 1;
    std::string source;
    const auto consider = [&](std::optional<std::int64_t> time, const char* path) {
        if (!time || *time < kYear2000 || *time >= oldest) return;
        oldest = *time;
        source = path;
    };
    if (const auto root = machine.facts("")) consider(root->born, "/");
    for (const char* path : {"/etc/machine-id", "/var/log/installer", "/root/anaconda-ks.cfg"}) {
        if (const auto facts = machine.facts(path)) consider(facts->changed, path);
    }
    if (source.empty()) return;
    out.text("InstallDate", utcDate(oldest));
    out.text("InstallDateSource", source);
}

std::string selinuxMode(Machine& machine) {
    const std::string enforcing = machine.text("sys/fs/selinux/enforce");
    if (enforcing == "1") return "Enforcing";
    if (enforcing == "0") return "Permissive";
    const std::string config = machine.text("etc/selinux/config");
    const std::string wanted = toLower(findValue(config, "SELINUX", '=').value_or(""));
    if (wanted == "disabled") return "Disabled";
    // What is configured is not what runs, but a copy may have nothing else to tell.
    if (machine.live()) return "";
    if (wanted == "enforcing") return "Enforcing";
    return wanted == "permissive" ? "Permissive" : "";
}

void writeSecurity(Machine& machine, GroupWriter& out) {
    std::vector<std::string> modules;  // in the order in which they are asked
    const std::string names = machine.text("sys/kernel/security/lsm");
    for (const std::string_view name : split(names, ',')) modules.emplace_back(name);
    out.list("SecurityModules", modules);
    out.text("SelinuxMode", selinuxMode(machine));
}

std::string cLibrary(Machine& machine) {
    if (machine.live()) return std::string("glibc ") + ::gnu_get_libc_version();
    const std::string name = "/libc.so.6";
    std::vector<std::string> directories = {"lib64", "usr/lib64", "lib", "usr/lib"};
    for (const char* parent : {"lib", "usr/lib"}) {
        for (const std::string& triplet : machine.list(parent)) {
            if (triplet.find("-linux-gnu") == std::string::npos) continue;
            directories.push_back(std::string(parent) + '/' + triplet);
        }
    }
    for (const std::string& directory : directories) {
        const std::string target = machine.resolve(directory + name);  // older ones: a link to libc-2.31.so
        if (!target.empty()) return target.substr(target.find_last_of('/') + 1);
    }
    return "";
}

// The newest kernel whose modules are installed, when that is another than the one that runs. It may be
// older: of the newer one that runs the package was removed.
std::string pendingKernel(Machine& machine, const std::string& running) {
    std::vector<std::string> installed = machine.list("lib/modules");
    const auto isOther = [](const std::string& name) { return name[0] < '0' || name[0] > '9'; };
    installed.erase(std::remove_if(installed.begin(), installed.end(), isOther), installed.end());
    if (running.empty() || installed.empty() || installed.back() == running) return "";
    return installed.back();
}

std::optional<std::size_t> loadedModules(Machine& machine) {
    const auto modules = machine.read("proc/modules", Machine::kTable);
    if (!modules) return std::nullopt;
    return static_cast<std::size_t>(std::count(modules->begin(), modules->end(), '\n'));
}

std::optional<bool> rebootRequired(Machine& machine) {
    if (machine.exists("run/reboot-required") || machine.exists("var/run/reboot-required")) return true;
    return machine.exists("run") ? std::optional(false) : std::nullopt;
}

}  // namespace

void collectOperatingSystem(Machine& machine, GroupWriter& out) {
    const std::string kernel = machine.text("proc/sys/kernel/osrelease");
    const Architecture& architecture = machine.shared<Architecture>();
    out.beginInstance();
    writeRelease(machine, out);
    out.text("KernelName", machine.text("proc/sys/kernel/ostype"));
    out.text("KernelRelease", kernel);
    out.text("KernelVersion", machine.text("proc/sys/kernel/version"));
    out.text("Architecture", architecture.name());
    out.number("Bits", architecture.userBits());
    writeNames(machine, out);
    writeIdentity(machine, out);
    writeInstallDate(machine, out);
    const bool systemd = machine.exists("run/systemd/system");
    out.text("InitSystem", systemd ? "systemd" : machine.text("proc/1/comm"));
    writeSecurity(machine, out);
    out.text("KernelCommandLine", machine.text("proc/cmdline"));
    out.number("KernelTaint", machine.number("proc/sys/kernel/tainted"));
    out.number("KernelModulesLoaded", loadedModules(machine));
    out.text("CLibrary", cLibrary(machine));
    out.boolean("RebootRequired", rebootRequired(machine));
    out.text("PendingKernel", pendingKernel(machine, kernel));
}
