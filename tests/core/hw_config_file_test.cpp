#include "hw/config_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "hw/context.h"
#include "tests/support/expected_config.h"
#include "tests/support/hardware_fixture.h"

namespace {

std::string expected(const std::string& lines) {
    return expectedConfig("\t\t<Hardware version=\"1.0\">\n" + lines + "\t\t</Hardware>\n");
}

class HwConfigFile : public HardwareFixture {
  protected:
    std::string generated() {
        const std::string path = folder.path() + "/config.xml";
        EXPECT_EQ(0, HW_generateHWConfigFile(ctx, widen(path).c_str()));
        return readFile(path);
    }
};

TEST_F(HwConfigFile, WithoutGroups) {
    EXPECT_EQ(expected(""), generated());
}

TEST_F(HwConfigFile, WithoutGroupsHas13Lines) {
    const std::string text = generated();
    EXPECT_EQ(13, std::count(text.begin(), text.end(), '\n'));
}

TEST_F(HwConfigFile, NamesTheEnabledGroupsByTheirConfigurationNames) {
    ZUK_hw_setopt(ctx, 4, 1);
    ZUK_hw_setopt(ctx, 3, 1);
    EXPECT_EQ(expected("\t\t<Group Name=\"Memory\"/>\n\t\t<Group Name=\"Operating System\"/>\n"),
              generated());
}

TEST_F(HwConfigFile, NumbersWithoutAGroupHaveNoLine) {
    for (const int group : {17, 18, 33}) ZUK_hw_setopt(ctx, group, 1);
    EXPECT_EQ(expected(""), generated());
}

TEST_F(HwConfigFile, AllGroupsInCatalogueOrder) {
    ZUK_hw_setopt(ctx, 0, 1);
    std::string lines;
    for (const HWGroup* group = HW_GROUPS; group->configName != nullptr; ++group) {
        lines += "\t\t<Group Name=\"" + std::string(group->configName) + "\"/>\n";
    }
    EXPECT_EQ(expected(lines), generated());
}

TEST_F(HwConfigFile, OnlyAFlagOf1Counts) {
    ctx->enabled[3] = 2;
    EXPECT_EQ(expected(""), generated());
}

TEST_F(HwConfigFile, EarlierContentIsReplaced) {
    folder.file("config.xml", std::string(100000, 'x'));
    EXPECT_EQ(expected(""), generated());
}

TEST_F(HwConfigFile, MissingDirectoryIs102WithoutAMessage) {
    log.clear();
    EXPECT_EQ(102, HW_generateHWConfigFile(ctx, widen(folder.path() + "/missing/config.xml").c_str()));
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(HwConfigFile, FullDiskIs102WithAMessage) {
    log.clear();
    EXPECT_EQ(102, HW_generateHWConfigFile(ctx, L"/dev/full"));
    ASSERT_EQ(1u, log.lines.size());
    EXPECT_TRUE(log.has(0, "generateHWConfigFile()", "Error during write [/dev/full]"));
}

TEST_F(HwConfigFile, WriteDataTakesTheWholeText) {
    char buffer[16] = {};
    FILE* stream = fmemopen(buffer, sizeof buffer, "w");
    EXPECT_TRUE(HW_writeData(ctx, stream, "some text"));
    fclose(stream);
    EXPECT_STREQ("some text", buffer);
}

TEST_F(HwConfigFile, WriteDataFailsOnAStreamThatTakesNothing) {
    FILE* stream = fopen("/dev/null", "r");
    EXPECT_FALSE(HW_writeData(ctx, stream, "text"));
    fclose(stream);
}

}  // namespace
