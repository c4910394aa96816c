#include "tests/support/redirected_open.h"

#include <dlfcn.h>

#include <cerrno>
#include <cstdio>
#include <mutex>

namespace {

struct Redirection {
    std::string instead;
    int opened = 0;
};

std::mutex mutex;

// Made at first use: other static objects may open files before this one would be.
std::map<std::string, Redirection>& redirections() {
    static auto* map = new std::map<std::string, Redirection>;
    return *map;
}

// The path to open; empty when the opening is to fail.
std::string redirect(const char* path) {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = redirections().find(path);
    if (found == redirections().end()) return path;
    ++found->second.opened;
    return found->second.instead;
}

std::FILE* open(const char* symbol, const char* path, const char* mode) {
    using Open = std::FILE* (*)(const char*, const char*);
    const auto real = reinterpret_cast<Open>(dlsym(RTLD_NEXT, symbol));
    const std::string instead = redirect(path);
    if (instead.empty() && path[0] != '\0') {
        errno = ENOENT;
        return nullptr;
    }
    return real(instead.c_str(), mode);
}

}  // namespace

// These stand before the C library's in the test program.
extern "C" std::FILE* fopen(const char* path, const char* mode) {
    return open("fopen", path, mode);
}
extern "C" std::FILE* fopen64(const char* path, const char* mode) {
    return open("fopen64", path, mode);
}

RedirectedOpen::RedirectedOpen(const std::string& path, const std::string& instead) : path_(path) {
    const std::lock_guard<std::mutex> lock(mutex);
    redirections()[path_] = {instead, 0};
}

RedirectedOpen::~RedirectedOpen() {
    const std::lock_guard<std::mutex> lock(mutex);
    redirections().erase(path_);
}

int RedirectedOpen::opened() const {
    const std::lock_guard<std::mutex> lock(mutex);
    return redirections()[path_].opened;
}
