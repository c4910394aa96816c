#include "scanners/zukhw/release_files.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/os_release.h"
#include "scanners/zukhw/text.h"

namespace {

using Release = std::map<std::string, std::string>;

Release readLsbRelease(Machine& machine) {
    static constexpr std::pair<const char*, const char*> kNames[] = {
        {"NAME", "DISTRIB_ID"},
        {"PRETTY_NAME", "DISTRIB_DESCRIPTION"},
        {"VERSION_ID", "DISTRIB_RELEASE"},
        {"VERSION_CODENAME", "DISTRIB_CODENAME"},
    };
    const Release lsb = parseOsRelease(machine.text("etc/lsb-release"));
    Release release;
    for (const auto& [name, lsbName] : kNames) {
        const auto value = lsb.find(lsbName);
        if (value != lsb.end()) release[name] = value->second;
    }
    return release;
}

// "CentOS release 6.5 (Final)"
Release readRedHatRelease(Machine& machine) {
    constexpr std::string_view kRelease = " release ";
    const std::string text = machine.text("etc/redhat-release");
    const std::string_view line = std::string_view(text).substr(0, text.find('\n'));
    if (line.empty()) return {};
    Release release{{"PRETTY_NAME", std::string(line)}};
    const std::size_t at = line.find(kRelease);
    if (at == std::string_view::npos) return release;
    const std::string_view version = trim(line.substr(at + kRelease.size()));
    release["NAME"] = line.substr(0, at);
    release["VERSION"] = version;
    release["VERSION_ID"] = version.substr(0, version.find(' '));
    const std::size_t open = version.find('(');
    const std::size_t close = version.find(')');
    if (open < close && close != std::string_view::npos) {
        release["VERSION_CODENAME"] = version.substr(open + 1, close - open - 1);
    }
    return release;
}

// A line with the full name, then VERSION = 11 and PATCHLEVEL = 4.
Release readSuseRelease(Machine& machine) {
    const std::string text = machine.text("etc/SuSE-release");
    if (text.empty()) return {};
    Release release{{"PRETTY_NAME", text.substr(0, text.find('\n'))}};
    std::string compact;  // without the blanks around '=', which a shell would not take
    for (const char c : text) {
        if (c != ' ') compact += c;
    }
    const Release values = parseOsRelease(compact);
    const auto version = values.find("VERSION");
    if (version != values.end()) release["VERSION_ID"] = version->second;
    const auto codename = values.find("CODENAME");
    if (codename != values.end()) release["VERSION_CODENAME"] = codename->second;
    return release;
}

Release readDebianVersion(Machine& machine) {
    const std::string version = machine.text("etc/debian_version");
    if (version.empty()) return {};
    return {{"NAME", "Debian GNU/Linux"}, {"ID", "debian"}, {"VERSION_ID", version}};
}

}  // namespace

std::map<std::string, std::string> readReleaseFiles(Machine& machine) {
    for (const char* path : {"etc/os-release", "usr/lib/os-release"}) {
        Release release = parseOsRelease(machine.text(path));
        if (!release.empty()) return release;
    }
    for (const auto read : {readLsbRelease, readRedHatRelease, readSuseRelease, readDebianVersion}) {
        Release release = read(machine);
        if (!release.empty()) return release;
    }
    return {};
}
