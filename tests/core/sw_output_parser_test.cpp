#include "sw/output_parser.h"

#include <gtest/gtest.h>

#include <memory>

#include "frame/xml_parser.h"
#include "sw/node_text.h"
#include "tests/support/software_fixture.h"

namespace {

class SwOutputParser : public SoftwareFixture {
  protected:
    const Node* parse(const std::string& xml) {
        parser = std::make_unique<XMLParser>(nullptr, widen(folder.file("x.xml", xml)).c_str());
        EXPECT_EQ(0, parser->errors) << xml;
        return parser->getRootNode();
    }
    int parseOutput(const std::string& xml) { return SW_parseOutData(ctx, parse(xml)); }
    int parseWarnings(const std::string& xml) { return SW_parseWarnData(ctx, parse(xml)); }
    int parseBoth(const std::string& output, const std::string& warnings) {
        return SW_ParseOutput(ctx, widen(folder.file("output.xml", output)),
                              widen(folder.file("warnings.xml", warnings)));
    }
    const ZUKSwResult& only() {
        EXPECT_EQ(1u, ctx->results.size());
        return *ctx->results.at(0);
    }

    std::unique_ptr<XMLParser> parser;
};

TEST_F(SwOutputParser, NothingMatchedIs0WithoutAnArray) {
    EXPECT_EQ(0, parseOutput("<Results/>"));
    EXPECT_TRUE(ctx->results.empty());
    EXPECT_EQ(nullptr, ctx->resultArray);
}

TEST_F(SwOutputParser, NullRootIs0WithoutAnArray) {
    EXPECT_EQ(0, SW_parseOutData(ctx, nullptr));
    EXPECT_EQ(nullptr, ctx->resultArray);
}

TEST_F(SwOutputParser, NullContextIs3) {
    EXPECT_EQ(3, SW_parseOutData(nullptr, nullptr));
    EXPECT_EQ(3, SW_parseMatchedSignature(nullptr, nullptr));
    EXPECT_EQ(3, SW_parseWarnData(nullptr, nullptr));
}

TEST_F(SwOutputParser, Announcements) {
    SW_parseOutData(ctx, nullptr);
    SW_parseWarnData(ctx, nullptr);
    EXPECT_TRUE(log.has(2, "SW_parseOutData", "Parsing output file"));
    EXPECT_TRUE(log.has(2, "SW_parseWarnData", "Parsing warn data"));
}

TEST_F(SwOutputParser, ResultsKeepDocumentOrderAndStandInTheArray) {
    EXPECT_EQ(0, parseOutput("<Any>\n <MatchedSignature guid='b'/>\n <MatchedSignature guid='a'/>\n</Any>"));
    ASSERT_EQ(2u, ctx->results.size());
    EXPECT_EQ(L"b", ctx->results[0]->guid);
    EXPECT_EQ(L"a", ctx->results[1]->guid);
    EXPECT_EQ(ctx->results[0], ctx->resultArray[0]);
    EXPECT_EQ(ctx->results[1], ctx->resultArray[1]);
}

TEST_F(SwOutputParser, OtherElementsAndOtherCaseAreIgnored) {
    EXPECT_EQ(0,
              parseOutput("<R><matchedSignature/>MatchedSignature<MATCHEDSIGNATURE/><Other/><!-- c --></R>"));
    EXPECT_TRUE(ctx->results.empty());
}

TEST_F(SwOutputParser, HeadOfAResult) {
    parseOutput("<R><MatchedSignature name='n\xc3\xa9' other='x' guid='g'/></R>");
    EXPECT_EQ(L"g", only().guid);
    EXPECT_EQ(L"n\u00e9", only().name);
}

TEST_F(SwOutputParser, MissingHeadIsEmpty) {
    parseOutput("<R><MatchedSignature Guid='g' NAME='n'/></R>");
    EXPECT_EQ(L"", only().guid);
    EXPECT_EQ(L"", only().name);
}

TEST_F(SwOutputParser, NullElementIsAnEmptyResult) {
    EXPECT_EQ(0, SW_parseMatchedSignature(ctx, nullptr));
    EXPECT_EQ(L"", only().guid);
    EXPECT_EQ(nullptr, only().variableNames);
}

TEST_F(SwOutputParser, Variables) {
    parseOutput(
        "<R><MatchedSignature guid='g'>"
        "<Variable name='b' value='1'/><Variable value='2' name='a'>text<x/></Variable><Variable name='b' "
        "value='3'/>"
        "<Variable name='empty'/><Variable value='no name'/><Variable name='' value='x'/>"
        "<variable name='c' value='4'/></MatchedSignature></R>");
    const std::map<std::wstring, std::wstring> expected = {{L"a", L"2"}, {L"b", L"3"}, {L"empty", L""}};
    EXPECT_EQ(expected, only().variables);
    EXPECT_STREQ(L"a", only().variableNames[0]);
    EXPECT_STREQ(L"b", only().variableNames[1]);
    EXPECT_STREQ(L"empty", only().variableNames[2]);
}

TEST_F(SwOutputParser, NoVariablesNoNames) {
    parseOutput("<R><MatchedSignature guid='g'/></R>");
    EXPECT_EQ(nullptr, only().variableNames);
}

TEST_F(SwOutputParser, MetadataIsTheWholeElementAsText) {
    parseOutput(
        "<R><MatchedSignature><Metadata><Cpe a='1'>x &amp; y</Cpe></Metadata></MatchedSignature></R>");
    EXPECT_EQ(L"<Metadata><Cpe a=\"1\">x &amp; y</Cpe></Metadata>", only().metadata);
}

TEST_F(SwOutputParser, MetadataBytesAbove127AreNegative) {
    parseOutput("<R><MatchedSignature><Metadata>\xc3\xa9</Metadata></MatchedSignature></R>");
    const std::wstring text = {wchar_t(static_cast<signed char>('\xc3')),
                               wchar_t(static_cast<signed char>('\xa9'))};
    EXPECT_EQ(L"<Metadata>" + text + L"</Metadata>", only().metadata);
}

TEST_F(SwOutputParser, SecondMetadataReplacesTheFirst) {
    parseOutput("<R><MatchedSignature><Metadata>1</Metadata><Metadata>2</Metadata></MatchedSignature></R>");
    EXPECT_EQ(L"<Metadata>2</Metadata>", only().metadata);
}

TEST_F(SwOutputParser, MetadataInOtherCaseIsIgnored) {
    parseOutput("<R><MatchedSignature><metadata>1</metadata>Metadata</MatchedSignature></R>");
    EXPECT_EQ(L"", only().metadata);
}

TEST_F(SwOutputParser, EventsBecomeWarningsInOrder) {
    EXPECT_EQ(0, parseWarnings("<W><Event code='1'/><Info/><Event>two</Event>\n<event/><Event/></W>"));
    const std::vector<std::wstring> expected = {L"<Event code=\"1\"/>", L"<Event>two</Event>", L"<Event/>"};
    EXPECT_EQ(expected, ctx->warnings);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(ctx->warnings[i].c_str(), ctx->warningArray[i]);
}

TEST_F(SwOutputParser, KindOfAnEventNodeIsNotLookedAt) {
    EXPECT_EQ(0, parseWarnings("<W>Event</W>"));
    EXPECT_EQ(std::vector<std::wstring>{L"Event"}, ctx->warnings);
}

TEST_F(SwOutputParser, NoWarningsNoArray) {
    EXPECT_EQ(0, parseWarnings("<W><Info/></W>"));
    EXPECT_EQ(nullptr, ctx->warningArray);
}

TEST_F(SwOutputParser, WarningsAreAppendedAndTheArrayRebuilt) {
    parseWarnings("<W><Event/></W>");
    std::unique_ptr<const wchar_t*, decltype(&std::free)> first(ctx->warningArray, std::free);
    parseWarnings("<W><Event/></W>");
    EXPECT_EQ(2u, ctx->warnings.size());
    EXPECT_EQ(ctx->warnings[0].c_str(), ctx->warningArray[0]);
}

TEST_F(SwOutputParser, TextThatFailedOnceDoesNotSilenceTheNext) {
    struct Failing : Node {
        void write(std::ostream& out, int /*mode*/) const override { out.setstate(std::ios::failbit); }
    };
    Failing failing;
    failing.name = String(L"Event");
    Node good;
    good.name = String(L"Event");
    NodeText text;
    EXPECT_EQ(L"", text.of(failing, 1));
    EXPECT_EQ(L"<Event/>", text.of(good, 1));
}

TEST_F(SwOutputParser, BothFilesGood) {
    EXPECT_EQ(0, parseBoth("<R><MatchedSignature/></R>", "<W><Event/></W>"));
    EXPECT_EQ(1u, ctx->results.size());
    EXPECT_EQ(1u, ctx->warnings.size());
}

TEST_F(SwOutputParser, BrokenOutputIs204WithoutResultsAndWarnings) {
    EXPECT_EQ(204, parseBoth("<R><MatchedSignature/>", "<W><Event/></W>"));
    EXPECT_TRUE(ctx->results.empty());
    EXPECT_TRUE(ctx->warnings.empty());
}

TEST_F(SwOutputParser, BrokenWarningsAre205WithTheResultsKept) {
    EXPECT_EQ(205, parseBoth("<R><MatchedSignature/></R>", "<W><Event/>"));
    EXPECT_EQ(1u, ctx->results.size());
    EXPECT_TRUE(ctx->warnings.empty());
}

TEST_F(SwOutputParser, BothBrokenIs204) {
    EXPECT_EQ(204, parseBoth("<R>", "<W>"));
}

TEST_F(SwOutputParser, MissingFilesCountAsBroken) {
    const std::wstring good = widen(folder.file("good.xml", "<R/>"));
    EXPECT_EQ(204, SW_ParseOutput(ctx, L"/missing/output", good));
    EXPECT_EQ(205, SW_ParseOutput(ctx, good, L"/missing/warnings"));
}

TEST_F(SwOutputParser, BothFilesAreParsedBeforeEitherIsExamined) {
    parseBoth("<R>", "<W>");
    EXPECT_EQ(2u, log.textsOf("XML_parser").size());
}

}  // namespace
