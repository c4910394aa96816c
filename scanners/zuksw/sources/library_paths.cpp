#include "scanners/zuksw/sources/library_paths.h"

#include <fcntl.h>

#include <algorithm>
#include <utility>

#include "scanners/shared/packages/text.h"
#include "scanners/zuksw/files/file_object.h"
#include "scanners/zuksw/files/read_file.h"
#include "scanners/zuksw/language/name_glob.h"
#include "scanners/zuksw/walk/directory.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxFile = std::size_t{1} << 20U;
constexpr std::size_t kMaxDirectories = 1000;
constexpr int kMaxDepth = 8;
constexpr int kMaxFiles = 1000;  // an include may name many, each of which includes them all again

void replaceAll(std::string* text, const std::string& what, const std::string& with) {
    for (std::size_t at = text->find(what); at != text->npos; at = text->find(what, at + with.size())) {
        text->replace(at, what.size(), with);
    }
}

std::vector<std::string> splitList(std::string_view list, const std::string& origin, const Elf& elf) {
    std::vector<std::string> directories;
    while (!list.empty()) {
        const std::size_t colon = list.find(':');
        std::string directory(list.substr(0, colon));
        list.remove_prefix(colon == list.npos ? list.size() : colon + 1);
        for (const char* form : {"$ORIGIN", "${ORIGIN}"}) replaceAll(&directory, form, origin);
        for (const char* form : {"$LIB", "${LIB}"})
            replaceAll(&directory, form, elf.is64() ? "lib64" : "lib");
        for (const char* form : {"$PLATFORM", "${PLATFORM}"}) replaceAll(&directory, form, elf.machine());
        if (!directory.empty() && directory[0] == '/') directories.push_back(std::move(directory));
    }
    return directories;
}

std::vector<std::string> standardDirectories(const Elf& elf) {
    std::vector<std::string> directories;
    std::string machine = elf.machine();
    if (machine.size() == 4 && machine[0] == 'i' && machine.substr(2) == "86") machine = "i386";
    for (const char* top : {"/lib/", "/usr/lib/"}) directories.push_back(top + machine + "-linux-gnu");
    if (elf.is64()) directories.insert(directories.end(), {"/lib64", "/usr/lib64"});
    directories.insert(directories.end(), {"/lib", "/usr/lib"});
    return directories;
}

}  // namespace

std::vector<LoaderLine> parseLoaderConfiguration(std::string_view text) {
    std::vector<LoaderLine> lines;
    while (!text.empty()) {
        std::string_view line = takeLine(text);
        line = trimBlanks(line.substr(0, line.find('#')));
        std::string_view words = line;
        if (takeWord(words) == "include") {
            for (std::string_view word = takeWord(words); !word.empty(); word = takeWord(words))
                lines.push_back({true, std::string(word)});
        } else if (!line.empty() && line[0] == '/') {
            lines.push_back({false, std::string(trimBlanks(line.substr(0, line.find('='))))});  // "=libc6"
        }
    }
    return lines;
}

void LibraryPaths::include(const std::string& pattern, const std::string& from, int depth) {
    if (depth == kMaxDepth || filesRead_ >= kMaxFiles) return;
    const std::string full = pattern[0] == '/' ? pattern : directoryOf(from) + "/" + pattern;
    std::string error;
    const auto glob = NameGlob::parse(nameOf(full), &error);
    const auto directory = tree_.resolve(directoryOf(full));
    if (!glob || !directory) return;
    FileDescriptor fd = tree_.openAt(*directory, O_RDONLY | O_DIRECTORY);
    if (!fd.valid()) return;
    DirectoryReader::Buffer buffer = DirectoryReader::makeBuffer();
    DirectoryReader reader(std::move(fd), &buffer);
    DirectoryReader::Entry entry = {};
    std::vector<std::string> names;
    while (reader.next(&entry) && names.size() < kMaxFiles) {
        if (glob->matches(entry.name)) names.emplace_back(entry.name);
    }
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) readConfiguration(*directory + "/" + name, depth + 1);
}

void LibraryPaths::readConfiguration(const std::string& path, int depth) {
    const auto text = ++filesRead_ > kMaxFiles ? std::nullopt : readFile(tree_, path, kMaxFile);
    if (!text) return;
    for (const LoaderLine& line : parseLoaderConfiguration(*text)) {
        if (configured_.size() >= kMaxDirectories) return;
        if (line.isInclude) {
            include(line.path, path, depth);
        } else {
            configured_.push_back(line.path);
        }
    }
}

std::vector<std::string> LibraryPaths::candidates(std::string_view needed, const std::string& origin,
                                                  const Elf& elf, const ElfDynamic& dynamic) {
    // With a slash it is a path; a relative one begins wherever the program is started.
    if (needed[0] == '/') return {std::string(needed)};
    if (needed.find('/') != needed.npos) return {};
    std::call_once(once_, [this] { readConfiguration("/etc/ld.so.conf", 0); });
    // With a RUNPATH the older RPATH says nothing.
    std::vector<std::string> directories =
        splitList(dynamic.runpath.empty() ? dynamic.rpath : dynamic.runpath, origin, elf);
    directories.insert(directories.end(), configured_.begin(), configured_.end());
    const std::vector<std::string> standard = standardDirectories(elf);
    directories.insert(directories.end(), standard.begin(), standard.end());
    for (std::string& directory : directories) directory.append("/").append(needed);
    return directories;
}

}  // namespace zuksw
