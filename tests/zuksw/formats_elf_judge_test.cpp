#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "scanners/zuksw/formats/elf_dynamic.h"
#include "scanners/zuksw/formats/elf_notes.h"
#include "tests/zuksw/judge.h"

namespace zuksw {
namespace {

// The files that this process has mapped: its program, the C library, all others that it uses.
std::set<std::string> mappedFiles() {
    std::set<std::string> files;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        const auto slash = line.find('/');
        if (slash != std::string::npos) files.insert(line.substr(slash));
    }
    return files;
}

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

// What stands between each `before` and the next `after`.
std::vector<std::string> allBetween(const std::string& text, const std::string& before,
                                    const std::string& after) {
    std::vector<std::string> found;
    for (auto at = text.find(before); at != std::string::npos; at = text.find(before, at)) {
        at += before.size();
        found.push_back(text.substr(at, text.find_first_of(after, at) - at));
    }
    return found;
}

std::string firstBetween(const std::string& text, const std::string& before, const std::string& after) {
    const std::vector<std::string> found = allBetween(text, before, after);
    return found.empty() ? "" : found.front();
}

TEST(Elf, AgreesWithReadelfOnTheFilesOfThisProcess) {
    if (!isInstalled("readelf")) GTEST_SKIP() << "readelf is not installed";
    for (const std::string& path : mappedFiles()) {
        const std::string judge = ask({"env", "LC_ALL=C", "readelf", "-W", "-d", "-n", "-l", path}).output;
        const std::string bytes = contentOf(path);
        const std::optional<Elf> elf = Elf::parse(bytes);
        if (!elf) continue;  // tables of the locale
        const ElfDynamic dynamic = readElfDynamic(*elf);
        const std::vector<std::string> needed(dynamic.needed.begin(), dynamic.needed.end());
        EXPECT_EQ(needed, allBetween(judge, "Shared library: [", "]")) << path;
        EXPECT_EQ(dynamic.soname, firstBetween(judge, "Library soname: [", "]")) << path;
        EXPECT_EQ(elfBuildId(*elf), firstBetween(judge, "Build ID: ", "\n")) << path;
        EXPECT_EQ(elf->interpreter(), firstBetween(judge, "program interpreter: ", "]")) << path;
    }
}

}  // namespace
}  // namespace zuksw
