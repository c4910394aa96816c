#include "scanners/zukhw/architecture.h"

#include <endian.h>
#include <sys/utsname.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::size_t kElfHead = 20;  // to the end of e_machine

// What an ELF file's header says of the machine that it is for.
struct ElfTarget {
    bool is64 = false;
    bool bigEndian = false;
    unsigned machine = 0;
};

std::optional<ElfTarget> parseElfHead(std::string_view head) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(head[i]); };
    if (head.size() < kElfHead || !startsWith(head,
                                              "\x7F"
                                              "ELF")) {
        return std::nullopt;
    }
    ElfTarget target;
    target.is64 = at(4) == 2;
    target.bigEndian = at(5) == 2;
    target.machine = target.bigEndian ? at(18) * 256U + at(19) : at(19) * 256U + at(18);
    return target;
}

struct ElfName {
    unsigned machine;
    const char* little32;
    const char* little64;
    const char* big32;
    const char* big64;
};
constexpr ElfName kElfNames[] = {
    {3, "i686", "i686", "", ""},
    {62, "x86_64", "x86_64", "", ""},
    {40, "arm", "", "armeb", ""},
    {183, "aarch64", "aarch64", "", "aarch64_be"},
    {20, "", "", "ppc", ""},
    {21, "", "ppc64le", "", "ppc64"},
    {22, "", "", "s390", "s390x"},
    {8, "mips", "mips64", "mips", "mips64"},
    {243, "riscv32", "riscv64", "", ""},
    {258, "loongarch32", "loongarch64", "", ""},
    {50, "", "ia64", "", ""},
    {43, "", "", "", "sparc64"},
    {15, "", "", "parisc", "parisc64"},
    {0x9026, "", "alpha", "", ""},
};

std::string nameOf(const ElfTarget& target) {
    for (const ElfName& name : kElfNames) {
        if (name.machine != target.machine) continue;
        if (target.bigEndian) return target.is64 ? name.big64 : name.big32;
        return target.is64 ? name.little64 : name.little32;
    }
    return "";
}

// "Linux version 6.1.0-13-amd64 (...)": distributions name the architecture in the release, by its name or by
// that of their packages.
std::string nameInVersion(Machine& machine) {
    static constexpr std::pair<std::string_view, const char*> kNames[] = {
        {"x86_64", "x86_64"},
        {"amd64", "x86_64"},
        {"aarch64", "aarch64"},
        {"arm64", "aarch64"},
        {"i686", "i686"},
        {"686", "i686"},
        {"ppc64le", "ppc64le"},
        {"powerpc64le", "ppc64le"},
        {"s390x", "s390x"},
        {"riscv64", "riscv64"},
        {"loongarch64", "loongarch64"},
        {"loong64", "loongarch64"},
        {"armv7hl", "armv7l"},
    };
    const std::string version = machine.text("proc/version");
    const std::vector<std::string_view> fields = words(version);
    if (fields.size() < 3) return "";
    std::string release(fields[2]);
    std::replace(release.begin(), release.end(), '.', '-');
    for (const std::string_view part : split(release, '-')) {
        for (const auto& [word, name] : kNames) {
            if (part == word) return name;
        }
    }
    return "";
}

std::optional<ElfTarget> userSpaceTarget(Machine& machine) {
    for (const char* path : {"sbin/init", "bin/sh"}) {  // containers often have no init
        const auto head = machine.readHead(path, kElfHead);
        const auto target = head ? parseElfHead(*head) : std::nullopt;
        if (target) return target;
    }
    return std::nullopt;
}

}  // namespace

Architecture::Architecture(Machine& machine) {
    const std::optional<ElfTarget> target = userSpaceTarget(machine);
    if (target) userBits_ = target->is64 ? 64 : 32;
    utsname system{};
    if (machine.live() && ::uname(&system) == 0) name_ = system.machine;
    if (name_.empty()) name_ = machine.text("proc/sys/kernel/arch");
    if (name_.empty()) name_ = nameInVersion(machine);
    if (name_.empty() && target) name_ = nameOf(*target);
}

bool Architecture::bigEndian() const {
    static constexpr std::string_view kBig[] = {"s390",    "s390x",  "ppc",       "ppc64", "sparc",
                                                "sparc64", "parisc", "parisc64",  "mips",  "mips64",
                                                "m68k",    "armeb",  "aarch64_be"};
    if (name_.empty()) return BYTE_ORDER == BIG_ENDIAN;
    return std::find(std::begin(kBig), std::end(kBig), name_) != std::end(kBig);
}
