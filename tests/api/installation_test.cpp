#include "tests/api/installation.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/support/files.h"

namespace fs = std::filesystem;
using testing::ContainsRegex;

namespace {

const std::string kConsumer = ZUK_SOURCE_DIR "/tests/api/consumer";

const char* const kFiles[] = {
    "bin/zuk",
    "include/zuk.h",
    "include/zuk/frame/log.h",
    "include/zuk/frame/location.h",
    "include/zuk/frame/temporary_dir.h",
    "include/zuk/frame/xml_parser.h",
    "libexec/zuk/bin/zukhw",
    "libexec/zuk/bin/zuksw",
    "share/zuk/signatures/databases.xml",
    "share/zuk/zuk.ini",
};
const char* const kLibraryFiles[] = {
    "libzuk.so", "libzuk.so.1", "pkgconfig/zuk.pc", "pkgconfig/zuk-classes.pc", "cmake/zuk/zukConfig.cmake",
};

}  // namespace

TEST(Installation, HasEveryFile) {
    const Installation zuk;
    for (const char* file : kFiles) EXPECT_TRUE(fs::exists(zuk.prefix() + "/" + file)) << file;
    for (const char* file : kLibraryFiles) {
        EXPECT_TRUE(fs::exists(zuk.prefix() + "/" ZUK_INSTALL_LIBDIR "/" + file)) << file;
    }
}

TEST(Installation, CommandFindsItsLibraryAndItsScannerWhereverTheTreeIsMoved) {
    const Installation zuk;
    const std::string moved = zuk.folder().path() + "/moved";
    fs::rename(zuk.prefix(), moved);
    const ShellResult result = shell("env -u LD_LIBRARY_PATH " + moved + "/bin/zuk hw memory");
    EXPECT_THAT(result.out, ContainsRegex("TotalBytes +[0-9]+\n")) << result.err;
}

TEST(Installation, CommandFindsItsCatalogueWhereverTheTreeIsMoved) {
    const Installation zuk;
    const std::string moved = zuk.folder().path() + "/moved";
    fs::rename(zuk.prefix(), moved);
    const ShellResult result =
        shell("env -u LD_LIBRARY_PATH " + moved + "/bin/zuk sw --json --plugin system.Prefix=" + moved);
    EXPECT_EQ(0, result.status) << result.err;
}

TEST(Installation, HasOfTheCatalogueTheSignaturesAlone) {
    const Installation zuk;
    for (const auto& entry : fs::directory_iterator(zuk.prefix() + "/share/zuk/signatures")) {
        EXPECT_EQ(".xml", entry.path().extension()) << entry.path();
    }
}

TEST(Installation, IniFileNamesTheDirectoryAboveTheScanners) {
    const Installation zuk;
    EXPECT_EQ("ZUK_HomeDirectory = " + zuk.prefix() + "/libexec/zuk\n",
              readFile(zuk.prefix() + "/share/zuk/zuk.ini"));
}

TEST(Installation, ACProgramBuildsByPkgConfigAndRuns) {
    const Installation zuk;
    const ShellResult result = zuk.run("cc -std=c99 -Wall -Wextra -Werror -pedantic " + kConsumer +
                                       "/memory.c $(pkg-config --cflags --libs zuk) -o memory &&"
                                       "./memory $(pkg-config --variable=scannersdir zuk)");
    EXPECT_THAT(result.out, ContainsRegex("^[0-9]+\n$")) << result.err;
    EXPECT_EQ(0, result.status);
}

TEST(Installation, ProgramsBuildByFindPackageAndRun) {
    const Installation zuk;
    const ShellResult result = zuk.run("{ cmake -S " + kConsumer +
                                       " -B build && cmake --build build; } >log 2>&1 || cat log >&2;"
                                       "build/classes >/dev/null &&"
                                       "build/memory $(sed -n 's/^-- scanners: //p' log)");
    EXPECT_THAT(result.out, ContainsRegex("^[0-9]+\n$")) << result.err;
    EXPECT_EQ(0, result.status);
}

TEST(Installation, ACxxProgramUsesTheExportedClassesByPkgConfig) {
    const Installation zuk;
    const ShellResult result = zuk.run("c++ -std=c++17 -Wall -Wextra -Werror -pedantic " + kConsumer +
                                       "/classes.cpp $(pkg-config --cflags --libs zuk-classes) -o classes &&"
                                       "./classes");
    EXPECT_EQ("<a><b c=\"d\">text</b></a> /opt/zuk\n", result.out) << result.err;
    EXPECT_EQ(0, result.status);
}

TEST(Installation, EachInstalledHeaderCompilesOnItsOwn) {
    const Installation zuk;
    const ShellResult result = zuk.run(
        "for header in $(cd prefix/include/zuk && find . -name '*.h'); do "
        "echo \"#include \\\"$header\\\"\" | c++ -std=c++17 -Wall -Wextra -Werror -fsyntax-only "
        "-Iprefix/include/zuk -x c++ - && echo $header; done | wc -l");
    EXPECT_EQ("6\n", result.out);
    EXPECT_EQ("", result.err);
}
