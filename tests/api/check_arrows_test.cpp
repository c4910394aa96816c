#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"

namespace fs = std::filesystem;
using testing::StartsWith;

namespace {

ShellResult check(const std::string& root) {
    return shell(ZUK_SOURCE_DIR "/tools/check_arrows " + root);
}

// A tree with one source that has one line.
ShellResult checkLine(const std::string& source, const std::string& line) {
    const TemporaryFolder root;
    fs::create_directories(fs::path(root.path() + "/" + source).parent_path());
    root.file(source, line + "\n");
    return check(root.path());
}

struct Arrow {
    const char* source;
    const char* line;
};

const Arrow kAllowed[] = {
    {"platform/runtime.h", "#include \"platform/xml_node.h\""},
    {"frame/log.cpp", "#include \"platform/mutex.h\""},
    {"frame/context.cpp", "#include <zuk.h>"},
    {"hw/run.cpp", "#include \"frame/log.h\""},
    {"hw/query.cpp", "#include \"hw/catalogue.h\""},
    {"hw/catalogue.cpp", "#include \"hw/catalogue.h\""},
    {"scanners/zukhw/groups/memory.cpp", "#include \"scanners/shared/rooted_fs.h\""},
    {"scanners/zukhw/config.cpp", "#include \"hw/catalogue.h\""},
    {"scanners/zuksw/checks/file.cpp", "#include \"platform/utf8.h\""},
    {"cli/hw.cpp", "#include <zuk.h>"},
    {"platform/runtime.cpp", "#include <sys/wait.h>"},
};

const Arrow kForbidden[] = {
    {"platform/mutex.cpp", "#include \"frame/log.h\""},
    {"platform/mutex.cpp", "#include <zuk.h>"},
    {"frame/log.cpp", "#include \"hw/context.h\""},
    {"hw/run.cpp", "#include \"sw/context.h\""},
    {"sw/query.cpp", "#include \"hw/context.h\""},
    {"hw/catalogue.cpp", "#include \"hw/context.h\""},
    {"hw/catalogue.h", "#include \"frame/log.h\""},
    {"scanners/shared/options.cpp", "#include \"scanners/zukhw/scan.h\""},
    {"scanners/zukhw/scan.cpp", "#include \"hw/context.h\""},
    {"scanners/zukhw/scan.cpp", "#include \"scanners/zuksw/walk/walk.h\""},
    {"scanners/zuksw/main.cpp", "#include \"hw/catalogue.h\""},
    {"cli/hw.cpp", "#include \"frame/log.h\""},
    {"cli/hw.cpp", "  #  include \"hw/catalogue.h\""},
    {"cli/hw.cpp", "#include <platform/runtime.h>"},
    {"cli/hw.cpp", "#include \"zuk.h\""},
    {"cli/hw.cpp", "#include \"table.h\""},
    {"frame/log.cpp", "#include \"../platform/mutex.h\""},
    {"hw/run.cpp", "#include \"tests/support/shell.h\""},
    {"include/zuk.h", "#include \"platform/runtime.h\""},
    {"scanners/other/main.cpp", "#include \"platform/runtime.h\""},
};

}  // namespace

TEST(CheckArrows, LetsPassWhatMayBe) {
    for (const Arrow& arrow : kAllowed) {
        EXPECT_EQ("", checkLine(arrow.source, arrow.line).out) << arrow.source;
        EXPECT_EQ(0, checkLine(arrow.source, arrow.line).status) << arrow.source << " " << arrow.line;
    }
}

TEST(CheckArrows, NamesTheLineThatMustNotBe) {
    for (const Arrow& arrow : kForbidden) {
        const ShellResult result = checkLine(arrow.source, arrow.line);
        EXPECT_EQ(1, result.status) << arrow.source << " " << arrow.line;
        EXPECT_THAT(result.out, StartsWith(std::string(arrow.source) + ":1: ")) << arrow.line;
    }
}

TEST(CheckArrows, FindsNothingInThisRepository) {
    const ShellResult result = check(ZUK_SOURCE_DIR);
    EXPECT_EQ("", result.out);
    EXPECT_EQ(0, result.status) << result.err;
}
