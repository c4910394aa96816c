// The configuration files against their published schema, judged by xmllint.
#include <gtest/gtest.h>

#include "hw/config_file.h"
#include "sw/config_file.h"
#include "tests/support/hardware_fixture.h"
#include "tests/support/software_fixture.h"
#include "tests/support/xml_schema.h"

namespace {

std::string complaint(const std::string& path) {
    return schemaComplaint("zukcli.xsd", quoted(path));
}

std::string withXse(const std::string& content) {
    return "<KAV><ZUK><XSE version='1.0'>" + content + "</XSE></ZUK></KAV>";
}

using HwConfigSchema = HardwareFixture;
using SwConfigSchema = SoftwareFixture;

TEST_F(HwConfigSchema, FileWithoutAndWithEveryGroupIsValid) {
    if (!haveXmllint()) GTEST_SKIP() << "xmllint is not installed";
    const std::string path = folder.path() + "/config.xml";
    for (const bool value : {false, true}) {
        ZUK_hw_setopt(ctx, 0, value);
        ASSERT_EQ(0, HW_generateHWConfigFile(ctx, widen(path).c_str()));
        EXPECT_EQ("", complaint(path));
    }
}

TEST_F(SwConfigSchema, FileWithoutAndWithOptionsIsValid) {
    if (!haveXmllint()) GTEST_SKIP() << "xmllint is not installed";
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
    if (!haveXmllint()) GTEST_SKIP() << "xmllint is not installed";
    const std::string kFiles[] = {
        "<KAV><ZUK><Hardware/></ZUK></KAV>",
        "<KAV><ZUK><Hardware version='1.0'><Group/></Hardware></ZUK></KAV>",
        "<KAV><ZUK/></KAV>",
        "<ZUK><XSE version='1.0'/></ZUK>",
        "<KAV><ZUK><XSE version='2.0'/></ZUK></KAV>",
        "<KAV><ZUK><XSE version='1.0'/><Hardware version='1.0'/></ZUK></KAV>",
        withXse("<PresetVariables><Variable name='a' value='b'/></PresetVariables>"),
        withXse("<Plugins><Plugin name='a' version='1.0'><Attribute name='b'/></Plugin></Plugins>"),
        withXse("<Plugins/><PresetVariables/>"),
    };
    for (const std::string& file : kFiles) EXPECT_NE("", complaint(folder.file("other.xml", file))) << file;
}

}  // namespace
