#include "scanners/zukhw/device_path.h"

#include <array>
#include <cstdio>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

bool allOf(std::string_view text, std::string_view allowed) {
    return !text.empty() && text.find_first_not_of(allowed) == std::string_view::npos;
}

template <typename Predicate>
std::string nearest(std::string_view path, Predicate matches) {
    while (!path.empty() && !matches(baseName(path))) path = parentPath(path);
    return std::string(path);
}

}  // namespace

bool isPciAddress(std::string_view name) {
    constexpr std::string_view kHex = "0123456789abcdef";
    const std::vector<std::string_view> parts = split(name, ':');
    if (parts.size() != 3 || parts[0].size() < 4 || parts[1].size() != 2 || parts[2].size() != 4)
        return false;
    return allOf(parts[0], kHex) && allOf(parts[1], kHex) && allOf(parts[2].substr(0, 2), kHex) &&
           parts[2][2] == '.' && parts[2][3] >= '0' && parts[2][3] <= '7';
}

bool isUsbPort(std::string_view name) {
    const std::size_t dash = name.find('-');
    if (dash == std::string_view::npos) return false;
    return allOf(name.substr(0, dash), "0123456789") && allOf(name.substr(dash + 1), "0123456789.");
}

std::string pciAncestor(std::string_view path) {
    return nearest(path, isPciAddress);
}

std::string usbAncestor(std::string_view path) {
    return nearest(path, isUsbPort);
}

std::string_view baseName(std::string_view path) {
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view parentPath(std::string_view path) {
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

std::string nearestDriver(Machine& machine, std::string_view path) {
    for (; path.size() > std::string_view("sys/devices").size(); path = parentPath(path)) {
        std::string driver = machine.linkName(std::string(path) + "/driver");
        if (!driver.empty()) return driver;
    }
    return "";
}

std::string readDeviceId(Machine& machine, const std::string& path) {
    const auto id = machine.hexNumber(path);
    if (!id || *id > 0xFFFF) return "";
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "%04x", static_cast<unsigned>(*id));
    return text.data();
}
