#include <gtest/gtest.h>

#include "tests/support/software_fixture.h"

namespace {

constexpr char kOneResult[] = "<R><MatchedSignature guid='g'/></R>";

class SwEvaluate : public SoftwareFixture {
  protected:
    int returnCode() {
        int rc = 99;
        EXPECT_EQ(0, ZUK_sw_get_returncode(ctx, &rc));
        return rc;
    }
    int multi() {
        const wchar_t* signatures[] = {L"<A/>", L"<B/>"};
        return ZUK_sw_evaluate_multi(ctx, signatures, 2);
    }
    int file() { return ZUK_sw_evaluate_file(ctx, L"/missing/signatures.xml"); }
    int one() { return ZUK_sw_evaluate(ctx, L"<A/>"); }
};

TEST_F(SwEvaluate, NullContextIs3BeforeAnythingElse) {
    EXPECT_EQ(3, ZUK_sw_evaluate(nullptr, nullptr));
    EXPECT_EQ(3, ZUK_sw_evaluate_multi(nullptr, nullptr, 0));
    EXPECT_EQ(3, ZUK_sw_evaluate_file(nullptr, nullptr));
}

TEST_F(SwEvaluate, NullSignatureIs202AndKeepsTheResultsBefore) {
    ASSERT_EQ(0, evaluateWith(kOneResult));
    EXPECT_EQ(202, ZUK_sw_evaluate(ctx, nullptr));
    EXPECT_EQ(202, ZUK_sw_evaluate_multi(ctx, nullptr, 3));
    EXPECT_EQ(202, ZUK_sw_evaluate_file(ctx, nullptr));
    EXPECT_EQ(1u, ctx->results.size());
    EXPECT_EQ(0, returnCode());
}

TEST_F(SwEvaluate, OneSignatureReachesTheScanner) {
    installScanner("zuksw",
                   "cat \"$8\" > '" + folder.path() + "/seen'\necho '<R/>' > \"$4\"\necho '<W/>' > \"$6\"");
    ASSERT_EQ(0, one());
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Signatures>\n<A/></Signatures>\n",
              readFile(folder.path() + "/seen"));
}

TEST_F(SwEvaluate, SeveralSignaturesReachTheScannerInOneFile) {
    installScanner("zuksw",
                   "cat \"$8\" > '" + folder.path() + "/seen'\necho '<R/>' > \"$4\"\necho '<W/>' > \"$6\"");
    ASSERT_EQ(0, multi());
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Signatures>\n<A/><B/></Signatures>\n",
              readFile(folder.path() + "/seen"));
}

TEST_F(SwEvaluate, FileIsPassedByItsPathAndLeftAlone) {
    const std::string path = folder.file("mine.xml", "<Signatures/>");
    installScanner("zuksw", "printf %s \"$8\" > '" + folder.path() +
                                "/seen'\necho '<R/>' > \"$4\"\necho '<W/>' > \"$6\"");
    ASSERT_EQ(0, ZUK_sw_evaluate_file(ctx, widen(path).c_str()));
    EXPECT_EQ(path, readFile(folder.path() + "/seen"));
    EXPECT_EQ("<Signatures/>", readFile(path));
    EXPECT_TRUE(filesNamed("sig_").empty());
}

TEST_F(SwEvaluate, MissingFileIsTheScannersBusiness) {
    installScanner("zuksw", "test -r \"$8\" || exit 3");
    EXPECT_EQ(202, file());
    EXPECT_EQ(3, returnCode());
}

TEST_F(SwEvaluate, OptionsReachTheScanner) {
    ZUK_sw_setopt_variable(ctx, L"v", L"1", L"g");
    installScanner("zuksw",
                   "cat \"$2\" > '" + folder.path() + "/seen'\necho '<R/>' > \"$4\"\necho '<W/>' > \"$6\"");
    ASSERT_EQ(0, one());
    EXPECT_NE(std::string::npos,
              readFile(folder.path() + "/seen").find("<Variable name=\"v\" value=\"1\" guid=\"g\" />"));
}

struct ScannerCase {
    const char* about;
    const char* body;
    int status;
    int returnCode;
};

TEST_F(SwEvaluate, ScannersOfAllSorts) {
    const ScannerCase kCases[] = {
        {"good", "echo '<R/>' > \"$4\"; echo '<W/>' > \"$6\"", 0, 0},
        {"exits 1", "exit 1", 203, 1},
        {"rejects the signatures", "exit 3", 202, 3},
        {"is killed", "kill -KILL $$", 203, 137},
        {"writes no file", "exit 0", 204, 0},
        {"writes half of one", "printf '<R><a' > \"$4\"; echo '<W/>' > \"$6\"", 204, 0},
        {"writes no warnings", "echo '<R/>' > \"$4\"", 205, 0},
        {"writes half the warnings", "echo '<R/>' > \"$4\"; printf '<W><a' > \"$6\"", 205, 0},
        {"writes two roots", "echo '<R/><R/>' > \"$4\"; echo '<W/>' > \"$6\"", 204, 0},
    };
    for (const ScannerCase& c : kCases) {
        installScanner("zuksw", c.body);
        EXPECT_EQ(c.status, one()) << c.about;
        EXPECT_EQ(c.returnCode, returnCode()) << c.about;
        EXPECT_EQ(c.status, multi()) << c.about;
        EXPECT_EQ(c.status, file()) << c.about;
    }
}

TEST_F(SwEvaluate, MissingScannerIs203) {
    EXPECT_EQ(203, one());
    EXPECT_EQ(-1, returnCode());
}

TEST_F(SwEvaluate, FailedConfigurationIs201) {
    loseDirectory();
    EXPECT_EQ(201, one());
    EXPECT_EQ(201, file());
    EXPECT_EQ(201, multi());
    EXPECT_EQ(-1, returnCode());
    ctx->tmpDir->initialised = true;
}

TEST_F(SwEvaluate, FailedSignatureFileIs201ForOneAnd202ForSeveral) {
    // The configuration file that cannot be opened passes; the signature file does not.
    std::filesystem::remove_all(narrow(ctx->tmpDir->getBasePath()));
    EXPECT_EQ(201, one());
    EXPECT_EQ(202, multi());
    EXPECT_EQ(-1, returnCode());
}

TEST_F(SwEvaluate, NullEntryIs202ForSeveral) {
    const wchar_t* signatures[] = {L"<A/>", nullptr};
    EXPECT_EQ(202, ZUK_sw_evaluate_multi(ctx, signatures, 2));
}

TEST_F(SwEvaluate, FailedEvaluationDropsTheResultsBefore) {
    ASSERT_EQ(0, evaluateWith(kOneResult, "<W><Event/></W>"));
    installScanner("zuksw", "exit 1");
    EXPECT_EQ(203, one());
    EXPECT_TRUE(ctx->results.empty());
    EXPECT_TRUE(ctx->warnings.empty());
}

TEST_F(SwEvaluate, BrokenWarningsKeepTheResultsQueryable) {
    installWriter(kOneResult, "<W>");
    EXPECT_EQ(205, one());
    ZUKSwResult** results = nullptr;
    unsigned count = 0;
    EXPECT_EQ(0, ZUK_sw_get_results(ctx, &results, &count));
    EXPECT_EQ(1u, count);
}

TEST_F(SwEvaluate, TwoEvaluationsLeaveTwoSetsOfFiles) {
    ASSERT_EQ(0, evaluateWith("<R/>"));
    ASSERT_EQ(0, evaluateWith("<R/>"));
    for (const char* prefix : {"cfg_", "sig_", "out_", "warning_"}) {
        EXPECT_EQ(2u, filesNamed(prefix).size()) << prefix;
        for (const std::string& path : filesNamed(prefix)) EXPECT_TRUE(std::filesystem::exists(path)) << path;
    }
}

TEST_F(SwEvaluate, NothingIsLeftOnDisk) {
    ZUKCtx* otherLibrary = nullptr;
    ASSERT_EQ(0,
              ZUK_init("t", nullptr, nullptr, widen(temp()).c_str(), widen(home()).c_str(), &otherLibrary));
    const std::string path = narrow(otherLibrary->tmpDir->getBasePath());
    ZUKSwCtx* other = nullptr;
    ASSERT_EQ(0, ZUK_sw_init(otherLibrary, nullptr, nullptr, &other));
    installWriter("<R/>", "<W/>");
    ASSERT_EQ(0, ZUK_sw_evaluate(other, L"<A/>"));
    EXPECT_EQ(0, ZUK_sw_free(other));
    EXPECT_EQ(0, ZUK_free(otherLibrary));
    EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
