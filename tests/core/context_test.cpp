#include "frame/context.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zuk.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "frame/log.h"
#include "frame/narrow.h"
#include "frame/temporary_dir.h"
#include "tests/support/deliberate_leak.h"
#include "tests/support/log_recorder.h"
#include "tests/support/redirected_open.h"
#include "tests/support/temporary_folder.h"

namespace {

class ContextTest : public testing::Test {
  protected:
    int init(const char* exploiter, const wchar_t* homeDir) {
        return ZUK_init(exploiter, LogRecorder::callback, &recorder, widen(folder.path()).c_str(), homeDir,
                        &ctx);
    }
    bool folderIsEmpty() const { return std::filesystem::is_empty(folder.path()); }

    TemporaryFolder folder;
    RedirectedOpen noInstallation{"/etc/zuk/zuk.ini", ""};
    LogRecorder recorder;
    ZUKCtx* ctx = nullptr;
};

TEST_F(ContextTest, NoExploiterIsRefusedBeforeAnythingIsDone) {
    auto* const untouched = reinterpret_cast<ZUKCtx*>(&folder);
    ctx = untouched;
    EXPECT_EQ(2, init(nullptr, L"/home"));
    EXPECT_EQ(untouched, ctx);
    EXPECT_TRUE(recorder.lines.empty());
    EXPECT_TRUE(folderIsEmpty());
}

TEST_F(ContextTest, ExploiterIsCopied) {
    char name[] = "product";
    ASSERT_EQ(0, init(name, L"/home"));
    EXPECT_NE(name, ctx->exploiter);
    EXPECT_STREQ("product", ctx->exploiter);
    ZUK_free(ctx);
}

TEST_F(ContextTest, FirstMessageNamesExploiterVersionAndDirectory) {
    ASSERT_EQ(0, init("product", L"/a//b"));
    const LogLine& first = recorder.lines.at(0);
    EXPECT_EQ(2, first.level);
    EXPECT_EQ("ZUK_init", first.location);
    EXPECT_THAT(first.text,
                testing::MatchesRegex("init OK, Exploiter: \\[product\\] Version: "
                                      "\\[[0-9]{2}/[0-9]{2}/[0-9]{2}zuk_[0-9]+\\.[0-9]+\\.[0-9]+\\.[0-9]+\\] "
                                      "ZUK DIR\\[/a//b\\]"));
    ZUK_free(ctx);
}

TEST_F(ContextTest, FirstMessageSaysNullForNoDirectory) {
    ASSERT_EQ(0, init("product", nullptr));
    const std::string& text = recorder.lines.at(0).text;
    EXPECT_EQ("ZUK DIR[(null)]", text.substr(text.find("ZUK DIR")));
    ZUK_free(ctx);
}

TEST_F(ContextTest, LoggerHasLevel1) {
    ASSERT_EQ(0, init("product", nullptr));
    for (const LogLine& line : recorder.lines) EXPECT_EQ(1, line.loggerLevel) << line;
    ZUK_free(ctx);
}

TEST_F(ContextTest, HomeDirectoryIsTheGivenOneNormalised) {
    ASSERT_EQ(0, init("product", L"//opt///zuk/"));
    EXPECT_EQ(L"/opt/zuk/", ctx->homeDir);
    ZUK_free(ctx);
}

TEST_F(ContextTest, HomeDirectoryComesFromTheInstallationFile) {
    const TemporaryFolder etc;
    const RedirectedOpen installed("/etc/zuk/zuk.ini", etc.file("zuk.ini", "ZUK_HomeDirectory = /opt/zuk\n"));
    ASSERT_EQ(0, init("product", nullptr));
    EXPECT_EQ(L"/opt/zuk/bin", ctx->homeDir);
    ZUK_free(ctx);
}

TEST_F(ContextTest, MissingInstallationIsAWarningOnly) {
    ASSERT_EQ(0, init("product", nullptr));
    EXPECT_TRUE(recorder.has(0, "ZUK_init", "ZUK not installed, please specify a directory"));
    EXPECT_TRUE(ctx->homeDir.empty());
    ZUK_free(ctx);
}

TEST_F(ContextTest, KnownDirectoryIsNoWarning) {
    ASSERT_EQ(0, init("product", L"/home"));
    EXPECT_FALSE(recorder.has(0, "ZUK_init", "ZUK not installed, please specify a directory"));
    ZUK_free(ctx);
}

TEST_F(ContextTest, PrivateDirectoryStandsInTheBase) {
    ASSERT_EQ(0, init("product", L"/home"));
    const std::string path = narrow(ctx->tmpDir->getBasePath());
    EXPECT_EQ(folder.path() + "/zuk_", path.substr(0, folder.path().size() + 5));
    EXPECT_TRUE(std::filesystem::is_directory(path));
    ZUK_free(ctx);
}

TEST_F(ContextTest, MissingBaseFailsWith6AndKeepsTheOutput) {
    auto* const untouched = reinterpret_cast<ZUKCtx*>(&folder);
    ctx = untouched;
    const std::wstring missing = widen(folder.path() + "/missing");
    const DeliberateLeak kept;
    EXPECT_EQ(6, ZUK_init("product", LogRecorder::callback, &recorder, missing.c_str(), L"/home", &ctx));
    EXPECT_EQ(untouched, ctx);
}

TEST_F(ContextTest, LocationIsResolvedAlsoWhenTheDirectoryFailed) {
    const std::wstring missing = widen(folder.path() + "/missing");
    const DeliberateLeak kept;
    ZUK_init("product", LogRecorder::callback, &recorder, missing.c_str(), L"/home", &ctx);
    EXPECT_TRUE(recorder.has(2, "ZUKLocation::ZUKLocation()", "ZUK location [/home]"));
}

TEST_F(ContextTest, WorksWithoutACallback) {
    ASSERT_EQ(0, ZUK_init("product", nullptr, nullptr, widen(folder.path()).c_str(), L"/home", &ctx));
    EXPECT_EQ(0, ZUK_free(ctx));
}

TEST_F(ContextTest, FreeOfNullIs3) {
    EXPECT_EQ(3, ZUK_free(nullptr));
}

TEST_F(ContextTest, FreeRemovesTheDirectoryAndItsFiles) {
    ASSERT_EQ(0, init("product", L"/home"));
    std::wstring name;
    ASSERT_EQ(0, ctx->tmpDir->getTmpFile(name, L"x", L".xml"));
    std::ofstream(narrow(name)) << "x";
    EXPECT_EQ(0, ZUK_free(ctx));
    EXPECT_TRUE(folderIsEmpty());
}

TEST_F(ContextTest, FreeSaysForWhom) {
    ASSERT_EQ(0, init("product", L"/home"));
    ZUK_free(ctx);
    EXPECT_TRUE(recorder.has(2, "ZUK_free", "Deinit for exploiter: [product]"));
}

TEST_F(ContextTest, LoggerOutlivesTheDirectory) {
    ASSERT_EQ(0, init("product", L"/home"));
    ZUK_free(ctx);
    EXPECT_EQ("TemporaryDir::deleteDirectory()", recorder.lines.back().location);
}

TEST_F(ContextTest, FreeWithoutAnExploiterIs2AndKeepsTheRecord) {
    ASSERT_EQ(0, init("product", L"/home"));
    std::free(ctx->exploiter);
    ctx->exploiter = nullptr;
    ctx->tmpDir->log = nullptr;  // the logger goes all the same
    EXPECT_EQ(2, ZUK_free(ctx));
    EXPECT_EQ(nullptr, ctx->log);
    EXPECT_EQ(L"/home", ctx->homeDir);
    delete ctx->tmpDir;
    delete ctx;
}

TEST_F(ContextTest, FreeOfADirectoryNeverMadeIs6AndKeepsTheRecord) {
    ASSERT_EQ(0, init("product", L"/home"));
    delete ctx->tmpDir;
    ctx->tmpDir = new TemporaryDir(nullptr, L"/missing");
    EXPECT_EQ(6, ZUK_free(ctx));
    EXPECT_EQ(nullptr, ctx->exploiter);
    EXPECT_EQ(nullptr, ctx->tmpDir);
    delete ctx;
}

}  // namespace
