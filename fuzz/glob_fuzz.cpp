// The first line is a glob, the rest a path. Where fnmatch means the same, it must find the same; and a path
// that matches must be within reach from each directory above it.
#include <fnmatch.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "scanners/zuksw/language/path_glob.h"

namespace {

bool has(std::string_view text, std::string_view what) {
    return text.find(what) != text.npos;
}

// Braces and "**" are ours alone; fnmatch knows classes by name, and a slash or a backslash in a class
// otherwise.
bool meansTheSame(std::string_view glob) {
    if (has(glob, "{") || has(glob, "**") || has(glob, "[:") || has(glob, "[.") || has(glob, "[="))
        return false;
    return !has(glob, "[") || !(has(glob, "/") || has(glob, "\\"));
}

// Empty steps and "." stand for nothing in ours.
bool isPlainPath(std::string_view path) {
    const std::string closed = "/" + std::string(path) + "/";
    return !path.empty() && !has(closed, "//") && !has(closed, "/./");
}

void compareWithFnmatch(const zuksw::Glob& ours, const std::string& glob, const std::string& path,
                        int flags) {
    if (has(glob, std::string_view("\0", 1)) || has(path, std::string_view("\0", 1)) || !meansTheSame(glob))
        return;
    if (ours.matches(path) != (fnmatch(glob.c_str(), path.c_str(), flags) == 0)) std::abort();
}

void checkReach(const zuksw::Glob& glob, const std::string& path) {
    if (!glob.matches(path)) return;
    for (std::size_t slash = path.find('/'); slash != path.npos; slash = path.find('/', slash + 1)) {
        if (!glob.reachesBelow(std::string_view(path).substr(0, slash))) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto end = text.find('\n');
    if (end == text.npos) return 0;
    const std::string glob(text.substr(0, end));
    const std::string path(text.substr(end + 1));
    std::string error;
    const auto name = zuksw::Glob::parseName(glob, &error);
    if (name && isPlainPath(path) && !has(path, "/")) compareWithFnmatch(*name, glob, path, 0);
    const auto whole = zuksw::Glob::parsePath(glob, &error);
    if (!whole) return 0;
    if (isPlainPath(path)) checkReach(*whole, path);
    if (isPlainPath(path) && isPlainPath(glob)) compareWithFnmatch(*whole, glob, path, FNM_PATHNAME);
    // A text that is quoted matches itself.
    const auto quoted = zuksw::Glob::parsePath(zuksw::quoteGlob(path), &error);
    if (isPlainPath(path) && (!quoted || !quoted->matches(path))) std::abort();
    return 0;
}
