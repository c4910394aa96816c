#include "scanners/zuksw/sources/system_facts.h"

#include <gnu/libc-version.h>
#include <sys/utsname.h>

#include <algorithm>
#include <cctype>
#include <cerrno>

#include "scanners/shared/packages/text.h"
#include "scanners/zuksw/files/read_file.h"
#include "scanners/zuksw/formats/extractors.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxFile = std::size_t{1} << 20U;
constexpr std::string_view kKeys[] = {"kernel.name", "kernel.release", "kernel.version", "machine",
                                      "hostname",    "libc.version",   "container",      "init"};

// Where a tree may have it; Debian and its kin keep the libraries of each machine apart.
constexpr const char* kLibcDirectories[] = {"/lib64",
                                            "/lib",
                                            "/lib/x86_64-linux-gnu",
                                            "/lib/aarch64-linux-gnu",
                                            "/lib/i386-linux-gnu",
                                            "/lib/arm-linux-gnueabihf",
                                            "/lib/arm-linux-gnueabi",
                                            "/lib/powerpc64le-linux-gnu",
                                            "/lib/riscv64-linux-gnu",
                                            "/lib/s390x-linux-gnu",
                                            "/lib/loongarch64-linux-gnu",
                                            "/lib/mips64el-linux-gnuabi64",
                                            "/lib/mipsel-linux-gnu"};

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

std::string containerOf(const FileTree& tree) {
    const auto word = readFile(tree, "/run/systemd/container", kMaxFile);
    const std::string name = word ? firstLine(*word) : std::string();
    if (tree.stat("/run/.containerenv") || name == "podman") return "podman";
    if (tree.stat("/.dockerenv") || name == "docker") return "docker";
    if (name.compare(0, 3, "lxc") == 0) return "lxc";
    const auto groups = readFile(tree, "/proc/1/cgroup", kMaxFile);
    const auto mentions = [&](const char* what) { return groups && groups->find(what) != groups->npos; };
    if (mentions("/docker")) return "docker";
    if (mentions("/lxc")) return "lxc";
    return name.empty() && !mentions("/kubepods") ? "none" : "other";
}

}  // namespace

std::map<std::string, std::string> parseOsRelease(std::string_view text) {
    std::map<std::string, std::string> pairs;
    while (!text.empty()) {
        const std::string_view line = trimBlanks(takeLine(text));
        const std::size_t equals = line.find('=');
        if (line.empty() || line[0] == '#' || equals == line.npos || equals == 0) continue;
        std::string key(line.substr(0, equals));
        std::transform(key.begin(), key.end(), key.begin(),
                       [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
        const std::optional<std::string> value = shellValue(line.substr(equals + 1));
        if (value) pairs[key] = *value;
    }
    return pairs;
}

bool SystemFacts::isKey(std::string_view key) {
    // os-release writes its keys in capitals, and no key has others than these characters.
    constexpr std::string_view kCharacters = "abcdefghijklmnopqrstuvwxyz0123456789_";
    if (key.substr(0, 3) == "os.") {
        return key.size() > 3 && key.find_first_not_of(kCharacters, 3) == std::string_view::npos;
    }
    return std::find(std::begin(kKeys), std::end(kKeys), key) != std::end(kKeys);
}

SystemFacts::SystemFacts(const FileTree& tree) : tree_(tree) {
    struct utsname names = {};
    if (::uname(&names) != 0) return;
    hostName_ = static_cast<const char*>(names.nodename);
    machine_ = static_cast<const char*>(names.machine);
    facts_["kernel.name"] = static_cast<const char*>(names.sysname);
    facts_["kernel.release"] = static_cast<const char*>(names.release);
    facts_["kernel.version"] = static_cast<const char*>(names.version);
    facts_["machine"] = machine_;
    facts_["hostname"] = hostName_;
}

void SystemFacts::readOsRelease() {
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"}) {
        const auto text = readFile(tree_, path, kMaxFile);
        if (!text && errno != ENOENT && errno != ENOTDIR) osUnreadable_ = true;
        if (!text) continue;
        for (auto& [key, value] : parseOsRelease(*text)) facts_["os." + key] = value;
        osUnreadable_ = false;
        return;
    }
}

// The library says its own version; that of another tree is found in its file.
void SystemFacts::readLibc() {
    if (tree_.isWholeMachine()) {
        facts_["libc.version"] = ::gnu_get_libc_version();
        return;
    }
    constexpr std::string_view kBefore = "GNU C Library (";
    constexpr std::string_view kVersion = " version ";
    for (const char* directory : kLibcDirectories) {
        const auto bytes = readFile(tree_, directory + std::string("/libc.so.6"), std::size_t{16} << 20U);
        const std::size_t banner = bytes ? bytes->find(kBefore) : std::string::npos;
        if (banner == std::string::npos) continue;
        const std::size_t begin = bytes->find(kVersion, banner);
        if (begin == std::string::npos || begin > banner + 200) continue;
        const std::size_t digits = begin + kVersion.size();
        std::string version = bytes->substr(digits, bytes->find_first_not_of("0123456789.", digits) - digits);
        while (!version.empty() && version.back() == '.') version.pop_back();
        if (!version.empty()) facts_["libc.version"] = version;
        return;
    }
}

void SystemFacts::readRest() {
    readOsRelease();
    readLibc();
    facts_["container"] = containerOf(tree_);
    const auto init = readFile(tree_, "/proc/1/comm", kMaxFile);
    if (init) facts_["init"] = firstLine(*init);
}

Text SystemFacts::fact(const std::string& key) {
    std::call_once(once_, [this] { readRest(); });
    const auto found = facts_.find(key);
    if (found != facts_.end()) return Text::of(found->second);
    return osUnreadable_ && key.compare(0, 3, "os.") == 0 ? Text::unknown(toCauses(Cause::kUnreadable))
                                                          : Text();
}

}  // namespace zuksw
