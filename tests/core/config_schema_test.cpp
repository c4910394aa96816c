// The configuration files against their published schema, judged by xmllint.
#include <gtest/gtest.h>

#include "hw/config_file.h"
#include "sw/config_file.h"
#include "tests/support/hardware_fixture.h"
#include "tests/support/shell.h"
#include "tests/support/software_fixture.h"

namespace {

// Empty when the file is valid; else what xmllint says.
std::string complaint(const std::string& path) {
    const std::string schema = ZUK_SOURCE_DIR "/schemas/zukcli.xsd";
    const ShellResult result = shell("xmllint --noout --schema " + quoted(schema) + " " + quoted(path));
    return result.status == 0 ? "" : result.err;
}

bool haveJudge() {
    return shell("xmllint --version").status == 0;
}

using HwConfigSchema = HardwareFixture;
using SwConfigSchema = SoftwareFixture;

TEST_F(HwConfigSchema, FileWithoutAndWithEveryGroupIsValid) {
    if (!haveJudge()) GTEST_SKIP() << "xmllint is not installed";
    const std::string path = folder.path() + "/config.xml";
    for (const bool value : {false, true}) {
        ZUK_hw_setopt(ctx, 0, value);
        ASSERT_EQ(0, HW_generateHWConfigFile(ctx, widen(path).c_str()));
        EXPECT_EQ("", complaint(path));
    }
}

TEST_F(SwConfigSchema, FileWithoutAndWithOptionsIsValid) {
    if (!haveJudge()) GTEST_SKIP() << "xmllint is not installed";
    std::wstring path;
    ASSERT_EQ(0, SW_CreateConfigFile(ctx, path));
    EXPECT_EQ("", complaint(narrow(path)));
    ZUK_sw_setopt_variable(ctx, L"v", L"1", L"");
    ZUK_sw_setopt_config(ctx, L"search", L"Root", L"/usr");
    ZUK_sw_setopt_config(ctx, L"search", L"Root", L"/opt");
    ASSERT_EQ(0, SW_CreateConfigFile(ctx, path));
    EXPECT_EQ("", complaint(narrow(path)));
}

TEST_F(SwConfigSchema, OtherFilesAreNotValid) {
    if (!haveJudge()) GTEST_SKIP() << "xmllint is not installed";
    EXPECT_NE("", complaint(folder.file("other.xml", "<KAV><ZUK><Hardware/></ZUK></KAV>")));
}

}  // namespace
