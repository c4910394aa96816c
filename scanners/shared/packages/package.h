#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// How far a package is installed. Only dpkg and opkg know more than Installed.
enum class PackageState {
    NotInstalled,
    ConfigFiles,  // removed, its configuration files are left
    HalfInstalled,
    Unpacked,
    HalfConfigured,
    TriggersAwaited,
    TriggersPending,
    Installed,
};

// "installed", "config-files", ...: the word dpkg uses.
std::string_view packageStateName(PackageState state);

// The state of that name; no value when there is none.
std::optional<PackageState> packageStateByName(std::string_view name);

// True when the package's files are on the disk, at least in part.
bool filesArePresent(PackageState state);

// One package as its manager describes it. Text that the manager does not give is empty.
struct Package {
    std::string_view manager;  // a literal: "dpkg", "rpm", ...
    std::string name;
    std::string version;   // as the manager writes it, with epoch and revision
    std::string epoch;     // the parts of version
    std::string upstream;  //
    std::string revision;  // rpm calls it release
    std::string architecture;
    std::string vendor;
    std::string maintainer;
    std::string summary;  // one line
    std::string section;  // rpm calls it group
    std::string source;   // name of the package it was built from
    std::string license;
    std::string multiArch;  // dpkg's, of packages of several architectures: same, foreign or allowed
    std::string path;  // the file that describes it, relative to the root, where each package has its own
    std::optional<std::uint64_t> installedBytes;
    std::optional<std::int64_t> installTime;  // seconds since 1970
    PackageState state = PackageState::Installed;
    bool essential = false;
    bool automatic = false;  // installed because something else needs it
    bool held = false;       // the manager is told to leave it as it is
};

// Sets version and its parts from `[epoch:]upstream[-revision]`.
void setVersion(Package& package, std::string_view version);

// What one database gave. An entry that makes no sense is left out and counted.
struct PackageList {
    std::vector<Package> packages;
    std::size_t broken = 0;       // entries left out
    std::size_t firstBroken = 0;  // offset of the first of them in its file

    void skipBroken(std::size_t offset) {
        if (broken++ == 0) firstBroken = offset;
    }
};
