#include "sw/config_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/expected_config.h"
#include "tests/support/software_fixture.h"

namespace {

std::string expected(const std::string& lines) {
    return expectedConfig("\t\t<XSE version=\"1.0\">\n" + lines + "\t\t</XSE>\n");
}

class SwConfigFile : public SoftwareFixture {
  protected:
    std::string created() {
        EXPECT_EQ(0, SW_CreateConfigFile(ctx, path));
        return readFile(narrow(path));
    }

    std::wstring path;
};

TEST_F(SwConfigFile, WithoutOptions) {
    EXPECT_EQ(expected(""), created());
}

TEST_F(SwConfigFile, WithoutOptionsHas13Lines) {
    const std::string text = created();
    EXPECT_EQ(13, std::count(text.begin(), text.end(), '\n'));
}

TEST_F(SwConfigFile, VariablesInMapOrderBeforePlugins) {
    ZUK_sw_setopt_config(ctx, L"q", L"y", L"2");
    ZUK_sw_setopt_config(ctx, L"p", L"z", L"1");
    ZUK_sw_setopt_config(ctx, L"p", L"x", L"1");
    ZUK_sw_setopt_config(ctx, L"p", L"x", L"1");
    ZUK_sw_setopt_variable(ctx, L"b", L"2", L"g2");
    ZUK_sw_setopt_variable(ctx, L"a", L"1", L"");
    const char kOptions[] =
        "\t\t\t<PresetVariables>\n"
        "\t\t\t\t<Variable name=\"a\" value=\"1\" guid=\"\" />\n"
        "\t\t\t\t<Variable name=\"b\" value=\"2\" guid=\"g2\" />\n"
        "\t\t\t</PresetVariables>\n"
        "\t\t\t<Plugins>\n"
        "\t\t\t\t<Plugin name=\"p\" version=\"1.0\">\n"
        "\t\t\t\t\t<Attribute name=\"z\" value=\"1\"/>\n"
        "\t\t\t\t\t<Attribute name=\"x\" value=\"1\"/>\n"
        "\t\t\t\t\t<Attribute name=\"x\" value=\"1\"/>\n"
        "\t\t\t\t</Plugin>\n"
        "\t\t\t\t<Plugin name=\"q\" version=\"1.0\">\n"
        "\t\t\t\t\t<Attribute name=\"y\" value=\"2\"/>\n"
        "\t\t\t\t</Plugin>\n"
        "\t\t\t</Plugins>\n";
    EXPECT_EQ(expected(kOptions), created());
}

TEST_F(SwConfigFile, PluginWithoutAttributesHasNoRow) {
    ctx->pluginConfig[L"p"];
    EXPECT_EQ(expected("\t\t\t<Plugins>\n\t\t\t</Plugins>\n"), created());
}

struct ValueCase {
    const char* about;
    std::wstring value;
    std::string written;
};

TEST_F(SwConfigFile, ValuesAreNarrowedAndNotEscaped) {
    const ValueCase kCases[] = {
        {"markup as it is", L"<&\"'>", "<&\"'>"},
        {"low byte of a character", L"\u00fc\u20ac", "\xfc\xac"},
        {"a low byte of zero ends the text", L"ab\u0100cd", "ab"},
        {"nothing before it", L"\u0200cd", ""},
    };
    for (const ValueCase& c : kCases) {
        ZUK_sw_setopt_variable(ctx, L"v", c.value.c_str(), L"g");
        const std::string row = "\t\t\t\t<Variable name=\"v\" value=\"" + c.written + "\" guid=\"g\" />\n";
        EXPECT_NE(std::string::npos, created().find(row)) << c.about;
    }
}

TEST_F(SwConfigFile, NullContextIs3) {
    EXPECT_EQ(3, SW_CreateConfigFile(nullptr, path));
}

TEST_F(SwConfigFile, EveryFileHasANewName) {
    created();
    const std::wstring first = path;
    created();
    EXPECT_NE(first, path);
    EXPECT_EQ(2u, filesNamed("cfg_").size());
}

TEST_F(SwConfigFile, IsAnnounced) {
    created();
    EXPECT_TRUE(log.has(2, "SW_CreateConfigFile", "Creating a config file [" + narrow(path) + "]"));
}

TEST_F(SwConfigFile, FailedNameIs201AfterTheAnnouncement) {
    loseDirectory();
    path = L"/as/it/was";
    EXPECT_EQ(201, SW_CreateConfigFile(ctx, path));
    EXPECT_TRUE(log.has(2, "SW_CreateConfigFile", "Creating a config file [/as/it/was]"));
    ctx->tmpDir->initialised = true;
}

TEST_F(SwConfigFile, FileThatCannotBeOpenedIs0AndSilent) {
    std::filesystem::remove_all(narrow(ctx->tmpDir->getBasePath()));
    log.clear();
    EXPECT_EQ(0, SW_CreateConfigFile(ctx, path));
    EXPECT_EQ(0u, log.textsOf("SW_CreateConfigFile()").size());
    for (const LogLine& line : log.lines) EXPECT_EQ(2, line.level) << line;
}

TEST_F(SwConfigFile, WriteDataNarrow) {
    char buffer[16] = {};
    FILE* stream = fmemopen(buffer, sizeof buffer, "w");
    EXPECT_TRUE(SW_writeData(ctx, stream, "some"));
    EXPECT_TRUE(SW_writeData(ctx, stream, ""));
    EXPECT_FALSE(SW_writeData(ctx, stream, static_cast<const char*>(nullptr)));
    fclose(stream);
    EXPECT_STREQ("some", buffer);
}

TEST_F(SwConfigFile, WriteDataWide) {
    char buffer[16] = {};
    FILE* stream = fmemopen(buffer, sizeof buffer, "w");
    EXPECT_TRUE(SW_writeData(ctx, stream, L"a\u00e9"));
    EXPECT_TRUE(SW_writeData(ctx, stream, L"b\u0100c"));
    EXPECT_TRUE(SW_writeData(ctx, stream, L""));
    EXPECT_FALSE(SW_writeData(ctx, stream, static_cast<const wchar_t*>(nullptr)));
    fclose(stream);
    EXPECT_STREQ(
        "a\xe9"
        "b",
        buffer);
}

TEST_F(SwConfigFile, WriteDataFailsOnAStreamThatTakesNothing) {
    FILE* stream = fopen("/dev/null", "r");
    EXPECT_FALSE(SW_writeData(ctx, stream, "text"));
    EXPECT_FALSE(SW_writeData(ctx, stream, L"text"));
    fclose(stream);
}

}  // namespace
