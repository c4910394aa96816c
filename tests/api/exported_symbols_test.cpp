#include <gtest/gtest.h>

#include "tests/support/shell.h"

TEST(ExportedSymbols, AreThoseOfTheList) {
    const ShellResult difference =
        shell("nm -DC --defined-only " ZUK_BINARY_DIR
              "/lib/libzuk.so | sed 's/^[0-9a-f]* [A-Z] //; s/@@.*//' |"
              "LC_ALL=C sort -u | diff - " ZUK_SOURCE_DIR "/tests/api/exported_symbols.txt");
    EXPECT_EQ("", difference.out);
    EXPECT_EQ("", difference.err);
}

TEST(ExportedSymbols, NeedNoLibraryBesideThoseOfTheCompilerAndExpat) {
    const ShellResult needed =
        shell("readelf -d " ZUK_BINARY_DIR
              "/lib/libzuk.so | sed -n 's/.*(NEEDED).*\\[\\(.*\\)\\]/\\1/p' |"
              "grep -Ev '^(lib(c|m|gcc_s|stdc\\+\\+|expat|asan|ubsan|tsan)\\.so|ld-linux)'");
    EXPECT_EQ("", needed.out);
}
