#include "scanners/zuksw/sources/package_object.h"

#include <algorithm>
#include <cctype>

#include "scanners/zuksw/evaluation/machine.h"

namespace zuksw {
namespace {

struct ManagerRow {
    std::string_view name;
    const char* purlType;
    Scheme scheme;
    bool ofDistribution;  // its packages are named within a distribution
};
constexpr ManagerRow kManagers[] = {
    {"dpkg", "deb", Scheme::kDeb, true},       {"opkg", "opkg", Scheme::kDeb, true},
    {"rpm", "rpm", Scheme::kRpm, true},        {"apk", "apk", Scheme::kApk, true},
    {"pacman", "alpm", Scheme::kPacman, true}, {"flatpak", "flatpak", Scheme::kGeneric, false},
    {"snap", "snap", Scheme::kGeneric, false}, {"pip", "pypi", Scheme::kPep440, false},
    {"npm", "npm", Scheme::kSemver, false},    {"gem", "gem", Scheme::kGem, false},
    {"jar", "maven", Scheme::kMaven, false},
};

const ManagerRow* findManager(std::string_view name) {
    const auto found = std::find_if(std::begin(kManagers), std::end(kManagers),
                                    [&](const auto& row) { return row.name == name; });
    return found == std::end(kManagers) ? nullptr : &*found;
}

// Package names of Python compare without case, and '_' is '-'.
std::string pypiName(std::string name) {
    for (char& c : name)
        c = c == '_' || c == '.' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return name;
}

Text textOrUnset(std::string_view text) {
    return text.empty() ? Text() : Text::of(std::string(text));
}

}  // namespace

Scheme schemeOfManager(std::string_view manager) {
    const ManagerRow* row = findManager(manager);
    return row == nullptr ? Scheme::kGeneric : row->scheme;
}

std::string percentEncode(std::string_view text) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0 || c == '-' || c == '.' || c == '_' || c == '~' || c == ':') {
            encoded += c;
        } else {
            encoded += '%';
            encoded += kDigits[byte >> 4U];
            encoded += kDigits[byte & 15U];
        }
    }
    return encoded;
}

std::string PackageObject::identity() const {
    return std::string(package_.manager) + '\n' + group_ + '\n' + package_.name + '\n' +
           package_.architecture + '\n' + package_.version + '\n' + package_.path;
}

std::string PackageObject::purl(Machine& machine) const {
    const ManagerRow* row = findManager(package_.manager);
    if (row == nullptr) return {};
    std::string url = std::string("pkg:") + row->purlType + '/';
    std::string space = row->ofDistribution ? machine.system.fact("os.id").text : group_;
    std::string name = package_.manager == "pip" ? pypiName(package_.name) : package_.name;
    const std::size_t slash = package_.manager == "npm" ? name.find('/') : std::string::npos;
    if (slash != std::string::npos) {
        space = name.substr(0, slash);
        name.erase(0, slash + 1);
    }
    if (!space.empty()) url += percentEncode(space) + '/';
    // The epoch of an rpm is a qualifier of its own.
    const bool rpm = package_.manager == "rpm";
    std::string version = package_.version;
    if (rpm && !package_.epoch.empty()) version.erase(0, version.find(':') + 1);
    url += percentEncode(name);
    if (!version.empty()) url += '@' + percentEncode(version);
    char separator = '?';
    const auto qualify = [&](const char* key, const std::string& value) {
        if (value.empty()) return;
        url += separator + std::string(key) + '=' + percentEncode(value);
        separator = '&';
    };
    qualify("arch", package_.architecture);
    if (rpm) qualify("epoch", package_.epoch);
    return url;
}

Text PackageObject::property(std::string_view name, Machine& machine) const {
    if (name == "name") return Text::of(package_.name);
    if (name == "version") return Text::of(package_.version);
    if (name == "epoch") return textOrUnset(package_.epoch);
    if (name == "upstream") return textOrUnset(package_.upstream);
    if (name == "revision") return textOrUnset(package_.revision);
    if (name == "arch") return textOrUnset(package_.architecture);
    if (name == "manager") return Text::of(std::string(package_.manager));
    if (name == "source") return Text::of(package_.source.empty() ? package_.name : package_.source);
    if (name == "state") return Text::of(std::string(packageStateName(package_.state)));
    if (name == "vendor") return textOrUnset(package_.vendor);
    if (name == "path") return textOrUnset(package_.path);
    return Text::of(purl(machine));
}

}  // namespace zuksw
