#include <gtest/gtest.h>

#include "tests/support/software_fixture.h"

namespace {

constexpr char kOutput[] =
    "<R><MatchedSignature guid='A' name='one'><Variable name='v' value='1'/><Variable name='u' value='2'/>"
    "<Metadata>m</Metadata></MatchedSignature><MatchedSignature guid='a'/><MatchedSignature guid='A' "
    "name='two'/></R>";
constexpr char kWarnings[] = "<W><Event/><Event code='2'/></W>";

class SwQuery : public SoftwareFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(0, evaluateWith(kOutput, kWarnings));
        first = ctx->results.at(0);
        log.clear();
    }

    ZUKSwResult* first = nullptr;
    ZUKSwResult** results = nullptr;
    ZUKSwResult* result = nullptr;
    const wchar_t** texts = nullptr;
    const wchar_t* text = nullptr;
    unsigned count = 77;
};

TEST_F(SwQuery, ReturnCode) {
    int rc = 9;
    EXPECT_EQ(0, ZUK_sw_get_returncode(ctx, &rc));
    EXPECT_EQ(0, rc);
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_returncode", "Returning previous rc [0] [TRUE]"));
}

TEST_F(SwQuery, ReturnCodeOfAFailedRun) {
    ctx->lastRc = -1;
    int rc = 9;
    EXPECT_EQ(0, ZUK_sw_get_returncode(ctx, &rc));
    EXPECT_EQ(-1, rc);
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_returncode", "Returning previous rc [-1] [FALSE]"));
}

TEST_F(SwQuery, ReturnCodeChecksInOrder) {
    EXPECT_EQ(3, ZUK_sw_get_returncode(nullptr, nullptr));
    EXPECT_EQ(209, ZUK_sw_get_returncode(ctx, nullptr));
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_returncode", "Wrong pointer for RC"));
}

TEST_F(SwQuery, Results) {
    EXPECT_EQ(0, ZUK_sw_get_results(ctx, &results, &count));
    EXPECT_EQ(3u, count);
    EXPECT_EQ(ctx->resultArray, results);
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_results", "Requesting all results. Size: 3"));
}

TEST_F(SwQuery, NoResults) {
    ASSERT_EQ(0, evaluateWith("<R/>"));
    results = &first;
    EXPECT_EQ(0, ZUK_sw_get_results(ctx, &results, &count));
    EXPECT_EQ(0u, count);
    EXPECT_EQ(nullptr, results);
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_results", "Requesting all results. Size: 0"));
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_results", "No results, passing NULL"));
}

TEST_F(SwQuery, ResultsChecksInOrder) {
    EXPECT_EQ(3, ZUK_sw_get_results(nullptr, nullptr, nullptr));
    EXPECT_EQ(209, ZUK_sw_get_results(ctx, nullptr, &count));
    EXPECT_EQ(209, ZUK_sw_get_results(ctx, &results, nullptr));
    EXPECT_EQ(2u, log.count(2, "ZUK_sw_get_results", "Wrong table pointer"));
    ctx->lastRc = 1;
    EXPECT_EQ(206, ZUK_sw_get_results(ctx, nullptr, nullptr));
    EXPECT_TRUE(log.has(0, "ZUK_sw_get_results", "ERROR: Wrong last return code"));
    EXPECT_EQ(77u, count);
    EXPECT_EQ(nullptr, results);
}

TEST_F(SwQuery, Warnings) {
    EXPECT_EQ(0, ZUK_sw_get_warnings(ctx, &texts, &count));
    EXPECT_EQ(2u, count);
    EXPECT_STREQ(L"<Event code=\"2\"/>", texts[1]);
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_warnings", "Retrieving Warnings"));
}

TEST_F(SwQuery, WarningsAreReadableWhateverTheReturnCode) {
    ctx->lastRc = 5;
    EXPECT_EQ(0, ZUK_sw_get_warnings(ctx, &texts, &count));
    EXPECT_EQ(2u, count);
}

TEST_F(SwQuery, NoWarningsTouchNothing) {
    ASSERT_EQ(0, evaluateWith("<R/>"));
    EXPECT_EQ(0, ZUK_sw_get_warnings(ctx, &texts, &count));
    EXPECT_EQ(nullptr, texts);
    EXPECT_EQ(77u, count);
}

TEST_F(SwQuery, WarningsChecksInOrder) {
    EXPECT_EQ(3, ZUK_sw_get_warnings(nullptr, nullptr, nullptr));
    EXPECT_EQ(209, ZUK_sw_get_warnings(ctx, nullptr, &count));
    EXPECT_EQ(209, ZUK_sw_get_warnings(ctx, &texts, nullptr));
    EXPECT_EQ(2u, log.count(2, "ZUK_sw_get_warnings", "Error: wrong pointer"));
}

TEST_F(SwQuery, Variables) {
    EXPECT_EQ(0, ZUK_sw_get_variables(ctx, first, &texts, &count));
    ASSERT_EQ(2u, count);
    EXPECT_STREQ(L"u", texts[0]);
    EXPECT_STREQ(L"v", texts[1]);
    EXPECT_TRUE(log.has(2, "ZUK_sw_get_variables", "Requesting all variables for result [SIZE: 2]"));
}

TEST_F(SwQuery, NoVariables) {
    texts = &text;
    EXPECT_EQ(0, ZUK_sw_get_variables(ctx, ctx->results.at(1), &texts, &count));
    EXPECT_EQ(0u, count);
    EXPECT_EQ(nullptr, texts);
}

TEST_F(SwQuery, VariablesChecksInOrderAndSilent) {
    EXPECT_EQ(3, ZUK_sw_get_variables(nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(209, ZUK_sw_get_variables(ctx, nullptr, nullptr, &count));
    EXPECT_EQ(209, ZUK_sw_get_variables(ctx, nullptr, &texts, nullptr));
    EXPECT_EQ(207, ZUK_sw_get_variables(ctx, nullptr, &texts, &count));
    ctx->lastRc = 1;
    EXPECT_EQ(206, ZUK_sw_get_variables(ctx, nullptr, nullptr, nullptr));
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(SwQuery, Value) {
    EXPECT_EQ(0, ZUK_sw_get_value(ctx, first, L"v", &text));
    EXPECT_STREQ(L"1", text);
}

TEST_F(SwQuery, ValueChecksInOrderAndSilent) {
    EXPECT_EQ(3, ZUK_sw_get_value(nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(207, ZUK_sw_get_value(ctx, nullptr, nullptr, nullptr));
    EXPECT_EQ(209, ZUK_sw_get_value(ctx, first, nullptr, nullptr));
    EXPECT_EQ(208, ZUK_sw_get_value(ctx, first, nullptr, &text));
    for (const wchar_t* name : {L"V", L"", L"vv", L"w"})
        EXPECT_EQ(208, ZUK_sw_get_value(ctx, first, name, &text));
    ctx->lastRc = 1;
    EXPECT_EQ(206, ZUK_sw_get_value(ctx, nullptr, nullptr, nullptr));
    EXPECT_EQ(nullptr, text);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(SwQuery, Metadata) {
    EXPECT_EQ(0, ZUK_sw_get_metadata(ctx, first, &text));
    EXPECT_STREQ(L"<Metadata>m</Metadata>", text);
    EXPECT_EQ(0, ZUK_sw_get_metadata(ctx, ctx->results.at(1), &text));
    EXPECT_STREQ(L"", text);
}

TEST_F(SwQuery, Guid) {
    EXPECT_EQ(0, ZUK_sw_get_guid(ctx, ctx->results.at(1), &text));
    EXPECT_STREQ(L"a", text);
}

TEST_F(SwQuery, MetadataAndGuidCheckInOrder) {
    for (const auto query : {ZUK_sw_get_metadata, ZUK_sw_get_guid}) {
        ctx->lastRc = 0;
        log.clear();
        EXPECT_EQ(3, query(nullptr, nullptr, nullptr));
        EXPECT_EQ(209, query(ctx, nullptr, nullptr));
        EXPECT_TRUE(log.lines.empty());
        EXPECT_EQ(207, query(ctx, nullptr, &text));
        EXPECT_TRUE(log.has(0, "ZUK_sw_get_results", "ERROR: Wrong result"));
        ctx->lastRc = 1;
        EXPECT_EQ(206, query(ctx, nullptr, nullptr));
    }
    EXPECT_EQ(nullptr, text);
}

TEST_F(SwQuery, FindsTheFirstOfAGuid) {
    EXPECT_EQ(0, ZUK_sw_find_result_by_guid(ctx, L"A", &result));
    EXPECT_EQ(first, result);
}

TEST_F(SwQuery, FindChecksInOrder) {
    EXPECT_EQ(3, ZUK_sw_find_result_by_guid(nullptr, L"A", nullptr));
    EXPECT_EQ(209, ZUK_sw_find_result_by_guid(ctx, L"A", nullptr));
    EXPECT_EQ(210, ZUK_sw_find_result_by_guid(ctx, L"B", &result));
    SW_deleteResults(ctx);
    EXPECT_EQ(210, ZUK_sw_find_result_by_guid(ctx, L"A", &result));
    EXPECT_EQ(nullptr, result);
}

TEST_F(SwQuery, ChangedOptionHidesTheResultsFromMostQueries) {
    ZUK_sw_setopt_config(ctx, L"p", L"a", L"1");
    EXPECT_EQ(206, ZUK_sw_get_results(ctx, &results, &count));
    EXPECT_EQ(206, ZUK_sw_get_variables(ctx, first, &texts, &count));
    EXPECT_EQ(206, ZUK_sw_get_value(ctx, first, L"v", &text));
    EXPECT_EQ(206, ZUK_sw_get_metadata(ctx, first, &text));
    EXPECT_EQ(206, ZUK_sw_get_guid(ctx, first, &text));
    EXPECT_EQ(0, ZUK_sw_find_result_by_guid(ctx, L"A", &result));
    EXPECT_EQ(0, ZUK_sw_get_warnings(ctx, &texts, &count));
}

class SwGuidLookup : public SwQuery {
  protected:
    static constexpr char kHere[] = "ZUK_sw_find_results_by_guid";
    int find(const wchar_t* guid) { return ZUK_sw_find_results_by_guid(ctx, guid, &results, &count); }
};

TEST_F(SwGuidLookup, DeliversAllInOrder) {
    ASSERT_EQ(0, find(L"A"));
    ASSERT_EQ(2u, count);
    EXPECT_EQ(ctx->results[0], results[0]);
    EXPECT_EQ(ctx->results[2], results[1]);
}

TEST_F(SwGuidLookup, SecondRequestDeliversTheSameArray) {
    ASSERT_EQ(0, find(L"A"));
    ZUKSwResult** const earlier = results;
    count = 0;
    ASSERT_EQ(0, find(L"A"));
    EXPECT_EQ(earlier, results);
    EXPECT_EQ(2u, count);
    EXPECT_EQ((std::vector<std::string>{"generating new results", "Using cached results"}),
              log.textsOf(kHere));
    for (const LogLine& line : log.lines) EXPECT_EQ(2, line.level) << line;
}

TEST_F(SwGuidLookup, UnknownGuidIs210EachTime) {
    EXPECT_EQ(210, find(L"B"));
    EXPECT_EQ(210, find(L"B"));
    EXPECT_EQ(2u, log.count(2, kHere, "generating new results"));
    EXPECT_EQ(nullptr, results);
    EXPECT_EQ(77u, count);
    EXPECT_EQ(1u, ctx->guidResults.count(L"B"));
    EXPECT_EQ(0u, ctx->guidResultCounts.count(L"B"));
}

TEST_F(SwGuidLookup, GuidsDifferInCase) {
    ASSERT_EQ(0, find(L"a"));
    EXPECT_EQ(1u, count);
}

TEST_F(SwGuidLookup, NewEvaluationStartsAfresh) {
    ASSERT_EQ(0, find(L"A"));
    ASSERT_EQ(0, evaluateWith("<R><MatchedSignature guid='A'/></R>"));
    log.clear();
    ASSERT_EQ(0, find(L"A"));
    EXPECT_EQ(1u, count);
    EXPECT_TRUE(log.has(2, kHere, "generating new results"));
}

TEST_F(SwGuidLookup, ChecksInOrder) {
    EXPECT_EQ(3, ZUK_sw_find_results_by_guid(nullptr, L"A", nullptr, nullptr));
    EXPECT_EQ(209, ZUK_sw_find_results_by_guid(ctx, L"A", nullptr, &count));
    EXPECT_EQ(209, ZUK_sw_find_results_by_guid(ctx, L"A", &results, nullptr));
    EXPECT_EQ(2u, log.count(2, kHere, "Wrong pointer"));
}

TEST_F(SwGuidLookup, AnswersWhateverTheReturnCode) {
    ctx->lastRc = 5;
    EXPECT_EQ(0, find(L"A"));
}

}  // namespace
