#include "sw/context.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/software_fixture.h"

namespace {

constexpr char kConfig[] = "ZUK_sw_setopt_config";
constexpr char kVariable[] = "ZUK_sw_setopt_variables";

using SwContext = SoftwareFixture;

TEST_F(SwContext, TakesTheHomeDirectoryAndBorrowsTheLibrary) {
    EXPECT_EQ(library, ctx->libCtx);
    EXPECT_EQ(widen(home()), ctx->homeDir);
}

TEST_F(SwContext, LoggerHasLevel4AndTheCallersCallback) {
    ASSERT_FALSE(log.lines.empty());
    for (const LogLine& line : log.lines) EXPECT_EQ(4, line.loggerLevel) << line;
}

TEST_F(SwContext, DirectoryLiesInsideTheLibrarys) {
    const std::wstring inside = std::wstring(library->tmpDir->getBasePath()) + L"/zuksw";
    EXPECT_EQ(inside, std::wstring(ctx->tmpDir->getBasePath()).substr(0, inside.size()));
}

TEST_F(SwContext, StartsEmpty) {
    EXPECT_EQ(-1, ctx->lastRc);
    EXPECT_EQ(nullptr, ctx->warningArray);
    EXPECT_EQ(nullptr, ctx->resultArray);
    EXPECT_TRUE(ctx->results.empty());
}

TEST_F(SwContext, DirectoryThatCannotBeMadeIsOnlyLogged) {
    std::filesystem::remove_all(temp());
    LogRecorder otherLog;
    ZUKSwCtx* other = nullptr;
    ASSERT_EQ(0, ZUK_sw_init(library, LogRecorder::callback, &otherLog, &other));
    EXPECT_TRUE(otherLog.has(2, "ZUK_sw_init",
                             "Can't create temporary DIR: " + narrow(other->tmpDir->getBasePath())));
    ZUK_sw_free(other);
}

TEST_F(SwContext, ConfigAppendsAlsoDoubles) {
    EXPECT_EQ(0, ZUK_sw_setopt_config(ctx, L"p", L"a", L"1"));
    EXPECT_EQ(0, ZUK_sw_setopt_config(ctx, L"p", L"a", L"2"));
    EXPECT_EQ(0, ZUK_sw_setopt_config(ctx, L"p", L"a", L"2"));
    const std::vector<std::pair<std::wstring, std::wstring>> expected = {
        {L"a", L"1"}, {L"a", L"2"}, {L"a", L"2"}};
    EXPECT_EQ(expected, ctx->pluginConfig.at(L"p"));
}

TEST_F(SwContext, ConfigIsLoggedAtTheLowestLevel) {
    ZUK_sw_setopt_config(ctx, L"p", L"a", L"1");
    EXPECT_TRUE(log.has(0, kConfig, "Plugin [p] config set [a] = [1]"));
}

TEST_F(SwContext, VariableReplacesValueAndScope) {
    EXPECT_EQ(0, ZUK_sw_setopt_variable(ctx, L"v", L"1", L"g1"));
    EXPECT_EQ(0, ZUK_sw_setopt_variable(ctx, L"v", L"2", L"g2"));
    ASSERT_EQ(1u, ctx->presetVariables.size());
    EXPECT_EQ((std::pair<std::wstring, std::wstring>(L"2", L"g2")), ctx->presetVariables.at(L"v"));
}

TEST_F(SwContext, VariableIsLoggedAtTheHighestLevel) {
    ZUK_sw_setopt_variable(ctx, L"v", L"1", L"g");
    EXPECT_TRUE(log.has(2, kVariable, "Variable [v] set with value [1] for scope [g]"));
}

TEST_F(SwContext, EmptyStringsAreValid) {
    EXPECT_EQ(0, ZUK_sw_setopt_config(ctx, L"", L"", L""));
    EXPECT_EQ(0, ZUK_sw_setopt_variable(ctx, L"", L"", L""));
    EXPECT_EQ(1u, ctx->pluginConfig.count(L""));
    EXPECT_EQ(1u, ctx->presetVariables.count(L""));
}

TEST_F(SwContext, NamesDifferInCase) {
    ZUK_sw_setopt_variable(ctx, L"Name", L"1", L"");
    ZUK_sw_setopt_variable(ctx, L"name", L"2", L"");
    EXPECT_EQ(2u, ctx->presetVariables.size());
}

struct NullCase {
    const wchar_t* first;
    const wchar_t* second;
    const wchar_t* third;
};
const NullCase kNulls[] = {{nullptr, L"b", L"c"}, {L"a", nullptr, L"c"}, {L"a", L"b", nullptr}};

TEST_F(SwContext, NullStringsAre7AndStoreNothing) {
    ctx->lastRc = 5;
    for (const NullCase& c : kNulls) {
        log.clear();
        EXPECT_EQ(7, ZUK_sw_setopt_config(ctx, c.first, c.second, c.third));
        EXPECT_TRUE(log.has(0, kConfig, "Error: some of the attributes are NULL"));
        EXPECT_EQ(7, ZUK_sw_setopt_variable(ctx, c.first, c.second, c.third));
        EXPECT_TRUE(log.has(0, kVariable, "Error: some of the attributes are NULL"));
    }
    EXPECT_TRUE(ctx->pluginConfig.empty());
    EXPECT_TRUE(ctx->presetVariables.empty());
    EXPECT_EQ(5, ctx->lastRc);
}

TEST_F(SwContext, NullContextIs3BeforeAnythingElse) {
    EXPECT_EQ(3, ZUK_sw_setopt_config(nullptr, nullptr, L"a", L"b"));
    EXPECT_EQ(3, ZUK_sw_setopt_variable(nullptr, nullptr, L"a", L"b"));
    EXPECT_EQ(3, ZUK_sw_free(nullptr));
}

TEST_F(SwContext, SettersVoidTheReturnCode) {
    ctx->lastRc = 0;
    ZUK_sw_setopt_config(ctx, L"p", L"a", L"1");
    EXPECT_EQ(-1, ctx->lastRc);
    ctx->lastRc = 0;
    ZUK_sw_setopt_variable(ctx, L"v", L"1", L"g");
    EXPECT_EQ(-1, ctx->lastRc);
}

TEST_F(SwContext, DeleteResultsForgetsAllButTheOptions) {
    ZUK_sw_setopt_config(ctx, L"p", L"a", L"1");
    ZUK_sw_setopt_variable(ctx, L"v", L"1", L"g");
    ASSERT_EQ(0, evaluateWith("<R><MatchedSignature guid='g'/></R>", "<W><Event/></W>"));
    ZUKSwResult** found = nullptr;
    unsigned count = 0;
    ASSERT_EQ(0, ZUK_sw_find_results_by_guid(ctx, L"g", &found, &count));
    SW_deleteResults(ctx);
    EXPECT_TRUE(ctx->results.empty());
    EXPECT_EQ(nullptr, ctx->resultArray);
    EXPECT_TRUE(ctx->guidResults.empty());
    EXPECT_TRUE(ctx->guidResultCounts.empty());
    EXPECT_TRUE(ctx->warnings.empty());
    EXPECT_EQ(nullptr, ctx->warningArray);
    EXPECT_EQ(-1, ctx->lastRc);
    EXPECT_EQ(1u, ctx->pluginConfig.size());
    EXPECT_EQ(1u, ctx->presetVariables.size());
}

TEST_F(SwContext, DeleteResultsOfNullDoesNothing) {
    SW_deleteResults(nullptr);
    SUCCEED();
}

TEST_F(SwContext, FreeOfAContextWithoutADirectorySucceeds) {
    EXPECT_EQ(0, ZUK_sw_free(new ZUKSwCtx));
}

TEST_F(SwContext, FreeSpeaksFirstAndFallsSilentWithItsLogger) {
    LogRecorder otherLog;
    ZUKSwCtx* other = nullptr;
    ASSERT_EQ(0, ZUK_sw_init(library, LogRecorder::callback, &otherLog, &other));
    const std::string path = narrow(other->tmpDir->getBasePath());
    otherLog.clear();
    EXPECT_EQ(0, ZUK_sw_free(other));
    EXPECT_EQ("Deleting context", otherLog.lines.front().text);
    EXPECT_EQ("ZUK_sw_free", otherLog.lines.front().location);
    EXPECT_EQ("TemporaryDir::deleteDirectory()", otherLog.lines.back().location);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(SwResult, NoNamesWithoutVariables) {
    ZUKSwResult result;
    result.generateVariablesNames();
    EXPECT_EQ(nullptr, result.variableNames);
}

TEST(SwResult, NamesPointAtTheMapsKeysInItsOrder) {
    ZUKSwResult result;
    result.variables = {{L"b", L"1"}, {L"a", L"2"}, {L"B", L"3"}, {L"ab", L"4"}};
    result.generateVariablesNames();
    const std::vector<std::wstring> expected = {L"B", L"a", L"ab", L"b"};
    EXPECT_EQ(expected, std::vector<std::wstring>(result.variableNames, result.variableNames + 4));
    EXPECT_EQ(result.variables.begin()->first.c_str(), result.variableNames[0]);
}

}  // namespace
