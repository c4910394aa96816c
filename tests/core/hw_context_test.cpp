#include <gtest/gtest.h>

#include "hw/context.h"
#include "tests/support/hardware_fixture.h"

namespace {

using HwContext = HardwareFixture;

TEST(HwCatalogue, GroupIds) {
    struct {
        const wchar_t* name;
        int id;
    } const kCases[] = {
        {L"ComponentID", 1},
        {L"OperatingSystem", 4},
        {L"IPv6Address", 51},
        {L"SMBIOS", 24},
        {L"Operating System", -1},  // the configuration file's name, not the group's
        {L"operatingsystem", -1},
        {L"", -1},
        {L"Memor", -1},
        {L"MemoryX", -1},
    };
    for (const auto& c : kCases) EXPECT_EQ(c.id, HW_getGroupId(c.name)) << std::string(narrow(c.name));
}

TEST(HwCatalogue, HasAllRowsInAscendingOrder) {
    int rows = 0;
    int last = 0;
    for (const HWGroup* group = HW_GROUPS; group->configName != nullptr; ++group, ++rows) {
        EXPECT_GT(group->id, last);
        last = group->id;
    }
    EXPECT_EQ(48, rows);
}

TEST_F(HwContext, InitWithoutALibraryIs3) {
    EXPECT_EQ(3, ZUK_hw_init(nullptr, nullptr, nullptr, &ctx));
}

TEST_F(HwContext, TakesTheHomeDirectoryAndBorrowsTheLibrary) {
    EXPECT_EQ(library, ctx->library);
    EXPECT_EQ(widen(home()), ctx->homeDir);
}

TEST_F(HwContext, LoggerHasLevel3AndTheCallersCallback) {
    ASSERT_FALSE(log.lines.empty());
    for (const LogLine& line : log.lines) EXPECT_EQ(3, line.loggerLevel) << line;
}

TEST_F(HwContext, DirectoryLiesInsideTheLibrarys) {
    const std::wstring inside = std::wstring(library->tmpDir->getBasePath()) + L"/zukhw";
    EXPECT_EQ(inside, std::wstring(ctx->tmpDir->getBasePath()).substr(0, inside.size()));
    EXPECT_TRUE(std::filesystem::is_directory(narrow(ctx->tmpDir->getBasePath())));
}

TEST_F(HwContext, ReservesAnInitFile) {
    EXPECT_EQ(std::wstring(ctx->tmpDir->getBasePath()) + L"/hw_",
              ctx->initFile.substr(0, std::wcslen(ctx->tmpDir->getBasePath()) + 4));
}

TEST_F(HwContext, BothMapsHoldAnEmptyEntryForEverySlot) {
    EXPECT_EQ(52u, ctx->results.size());
    EXPECT_EQ(52u, ctx->fields.size());
    for (int slot = 0; slot < 52; ++slot) {
        EXPECT_TRUE(ctx->results.at(slot).empty());
        EXPECT_TRUE(ctx->fields.at(slot).empty());
    }
}

TEST_F(HwContext, ReturnCodeIsMinus1AfterInit) {
    int code = 7;
    EXPECT_EQ(0, ZUK_hw_get_returncode(ctx, &code));
    EXPECT_EQ(-1, code);
}

TEST_F(HwContext, DirectoryThatCannotBeMadeIsOnlyLogged) {
    std::filesystem::remove_all(narrow(library->tmpDir->getBasePath()));
    std::filesystem::remove(temp());
    LogRecorder otherLog;
    ZUKHwCtx* other = nullptr;
    ASSERT_EQ(0, ZUK_hw_init(library, LogRecorder::callback, &otherLog, &other));
    EXPECT_TRUE(otherLog.has(2, "ZUK_hw_init",
                             "Can't create temporary DIR: " + narrow(other->tmpDir->getBasePath())));
    EXPECT_FALSE(otherLog.textsOf("ZUK_hw_init").empty());
    EXPECT_EQ(2u, otherLog.textsOf("ZUK_hw_init").size());
    EXPECT_EQ("Error in TMP file creation: ", otherLog.textsOf("ZUK_hw_init").at(1));
    ZUK_hw_free(other);
}

TEST_F(HwContext, SetoptChecksInOrder) {
    struct {
        ZUKHwCtx* ctx;
        int group;
        unsigned char value;
        int status;
    } const kCases[] = {
        {nullptr, -1, 2, 3}, {ctx, -1, 2, 7}, {ctx, 4, 2, 7},      {ctx, 4, 255, 7}, {ctx, -1, 1, 101},
        {ctx, 52, 1, 101},   {ctx, 4, 1, 0},  {ctx, 17, 1, 0},     {ctx, 18, 1, 0},  {ctx, 33, 0, 0},
        {ctx, 0, 1, 0},      {ctx, 51, 1, 0}, {ctx, 1000, 0, 101},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(c.status, ZUK_hw_setopt(c.ctx, c.group, c.value)) << c.group << " " << int(c.value);
    }
}

TEST_F(HwContext, GroupsStartDisabled) {
    for (const unsigned char flag : ctx->enabled) EXPECT_EQ(0, flag);
}

TEST_F(HwContext, SetoptOfOneGroupSetsItsFlagAlone) {
    ZUK_hw_setopt(ctx, 4, 1);
    for (int slot = 0; slot < 52; ++slot) EXPECT_EQ(slot == 4 ? 1 : 0, ctx->enabled[slot]) << slot;
}

TEST_F(HwContext, SetoptOf0SetsEveryFlag) {
    ZUK_hw_setopt(ctx, 0, 1);
    for (const unsigned char flag : ctx->enabled) EXPECT_EQ(1, flag);
    ZUK_hw_setopt(ctx, 0, 0);
    for (const unsigned char flag : ctx->enabled) EXPECT_EQ(0, flag);
}

TEST_F(HwContext, SetoptSaysWhatItSets) {
    ZUK_hw_setopt(ctx, 0, 1);
    ZUK_hw_setopt(ctx, 3, 0);
    EXPECT_TRUE(log.has(2, "ZUK_hw_setopt", "Setting all opts: [true]"));
    EXPECT_TRUE(log.has(2, "ZUK_hw_setopt", "Setting opt: [3=false]"));
}

TEST_F(HwContext, RefusedSetoptChangesNothing) {
    ctx->returnCode = 0;
    ZUK_hw_setopt(ctx, 52, 1);
    ZUK_hw_setopt(ctx, 4, 2);
    EXPECT_EQ(0, ctx->returnCode);
    for (const unsigned char flag : ctx->enabled) EXPECT_EQ(0, flag);
}

TEST_F(HwContext, SetoptVoidsTheReturnCode) {
    ctx->returnCode = 0;
    ZUK_hw_setopt(ctx, 4, 1);
    EXPECT_EQ(-1, ctx->returnCode);
}

TEST_F(HwContext, GroupNames) {
    struct {
        int group;
        int status;
        const wchar_t* name;
    } const kCases[] = {
        {1, 0, L"ComponentID"}, {4, 0, L"OperatingSystem"}, {51, 0, L"IPv6Address"},
        {17, 101, nullptr},     {18, 101, nullptr},         {33, 101, nullptr},
        {0, 101, nullptr},      {52, 101, nullptr},         {-1, 101, nullptr},
    };
    for (const auto& c : kCases) {
        const wchar_t* name = nullptr;
        EXPECT_EQ(c.status, ZUK_hw_get_group_name(ctx, c.group, &name)) << c.group;
        EXPECT_STREQ(c.name, name) << c.group;
    }
    EXPECT_EQ(3, ZUK_hw_get_group_name(nullptr, 4, nullptr));
}

TEST_F(HwContext, GroupNameIsLoggedOnceTheNumberIsInRange) {
    const wchar_t* name = nullptr;
    ZUK_hw_get_group_name(ctx, 17, &name);
    ZUK_hw_get_group_name(ctx, 52, &name);
    EXPECT_EQ(std::vector<std::string>{"Retrieving group id [17]"}, log.textsOf("ZUK_hw_get_group_name"));
}

TEST_F(HwContext, ReturnCodeChecksInOrder) {
    EXPECT_EQ(3, ZUK_hw_get_returncode(nullptr, nullptr));
    EXPECT_EQ(109, ZUK_hw_get_returncode(ctx, nullptr));
}

TEST_F(HwContext, FreeOfNullIs3) {
    EXPECT_EQ(3, ZUK_hw_free(nullptr));
}

TEST_F(HwContext, FreeRemovesFilesAndDirectoryAndSpeaksLast) {
    LogRecorder otherLog;
    ZUKHwCtx* other = nullptr;
    ASSERT_EQ(0, ZUK_hw_init(library, LogRecorder::callback, &otherLog, &other));
    const std::string path = narrow(other->tmpDir->getBasePath());
    std::ofstream(narrow(other->initFile)) << "x";
    EXPECT_EQ(0, ZUK_hw_free(other));
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ("Deleting logger 0, last call", otherLog.lines.back().text);
    EXPECT_EQ("ZUK_hw_free", otherLog.lines.back().location);
    EXPECT_EQ(2, otherLog.lines.back().level);
}

TEST_F(HwContext, WorksWithoutACallback) {
    ZUKHwCtx* other = nullptr;
    ASSERT_EQ(0, ZUK_hw_init(library, nullptr, nullptr, &other));
    EXPECT_EQ(0, ZUK_hw_setopt(other, 0, 1));
    EXPECT_EQ(0, ZUK_hw_free(other));
}

}  // namespace
