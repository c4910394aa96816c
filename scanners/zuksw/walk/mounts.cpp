#include "scanners/zuksw/walk/mounts.h"

#include <optional>

namespace zuksw {
namespace {

std::string_view nextField(std::string_view* line) {
    const std::size_t blank = line->find(' ');
    const std::string_view field = line->substr(0, blank);
    line->remove_prefix(blank == line->npos ? line->size() : blank + 1);
    return field;
}

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

// The kernel writes blank, tab, line feed and backslash as \ooo.
std::string unescape(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escaped = text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) &&
                             isOctal(text[i + 2]) && isOctal(text[i + 3]);
        if (!escaped) {
            plain += text[i];
            continue;
        }
        plain += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
        i += 3;
    }
    return plain;
}

// "36 35 98:0 /subtree /point options optional... - type source super-options"
std::optional<Mount> parseLine(std::string_view line) {
    Mount mount;
    nextField(&line);
    nextField(&line);
    mount.device = nextField(&line);
    mount.subtree = unescape(nextField(&line));
    mount.point = unescape(nextField(&line));
    const std::size_t separator = line.find(" - ");
    if (separator == line.npos || mount.point.substr(0, 1) != "/") return std::nullopt;
    line.remove_prefix(separator + 3);
    mount.type = nextField(&line);
    return mount;
}

}  // namespace

std::vector<Mount> parseMounts(std::string_view mountinfo) {
    std::vector<Mount> mounts;
    while (!mountinfo.empty()) {
        const std::size_t end = mountinfo.find('\n');
        std::optional<Mount> mount = parseLine(mountinfo.substr(0, end));
        if (mount) mounts.push_back(*std::move(mount));
        mountinfo.remove_prefix(end == mountinfo.npos ? mountinfo.size() : end + 1);
    }
    return mounts;
}

bool isAtOrBelow(std::string_view path, std::string_view directory) {
    if (path.substr(0, directory.size()) != directory) return false;
    return path.size() == directory.size() || path[directory.size()] == '/';
}

}  // namespace zuksw
