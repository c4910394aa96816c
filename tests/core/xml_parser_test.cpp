#include "frame/xml_parser.h"

#include <gtest/gtest.h>

#include "frame/log.h"
#include "tests/support/log_recorder.h"
#include "tests/support/reading.h"

namespace {
class XMLParserTest : public testing::Test {
  protected:
    std::wstring document(std::string_view content) { return widen(folder_.file("document.xml", content)); }

    TemporaryFolder folder_;
    LogRecorder recorder_;
    ZUKlog log_{3, LogRecorder::callback, &recorder_};
};

TEST_F(XMLParserTest, KeepsTheTreeOfAWellFormedFile) {
    XMLParser parser(&log_, document("<Root><a/></Root>").c_str());
    EXPECT_EQ(0, parser.errors);
    ASSERT_NE(nullptr, parser.getRootNode());
    EXPECT_STREQ(L"Root", parser.getRootNode()->name.text);
    EXPECT_TRUE(recorder_.lines.empty());
}

TEST_F(XMLParserTest, LogsASyntaxErrorAtMin) {
    XMLParser parser(&log_, document("<Root>\n<a></Root>").c_str());
    EXPECT_EQ(1, parser.errors);
    EXPECT_EQ(nullptr, parser.getRootNode());
    EXPECT_EQ(1u, recorder_.lines.size());
    EXPECT_TRUE(recorder_.has(ZUKlog::kMin, "XML_parser", "Error in line 2: mismatched tag"));
}

TEST_F(XMLParserTest, LogsAMissingFileAtMin) {
    const std::string path = folder_.path() + "/missing.xml";
    XMLParser parser(&log_, widen(path).c_str());
    EXPECT_EQ(1, parser.errors);
    EXPECT_EQ(nullptr, parser.getRootNode());
    EXPECT_EQ(1u, recorder_.lines.size());
    EXPECT_TRUE(recorder_.has(ZUKlog::kMin, "XML_parser",
                              "Error in line 0: cannot read " + path + ": No such file or directory"));
}

TEST_F(XMLParserTest, LogsAWarningAtMax) {
    XMLParser parser(&log_, document("<!DOCTYPE r SYSTEM 'none.dtd'>\n<r>&e;</r>").c_str());
    EXPECT_EQ(0, parser.errors);
    EXPECT_EQ(1u, recorder_.lines.size());
    EXPECT_TRUE(recorder_.has(ZUKlog::kMax, "XML_parser", "Warning in line 2: entity skipped: e"));
}

TEST_F(XMLParserTest, NeedsNoLog) {
    XMLParser parser(nullptr, document("<!DOCTYPE r SYSTEM 'none.dtd'><r>&e;").c_str());
    EXPECT_EQ(1, parser.errors);
}

TEST_F(XMLParserTest, TakesNoPathForAMissingFile) {
    XMLParser parser(&log_, nullptr);
    EXPECT_EQ(1, parser.errors);
    EXPECT_EQ(nullptr, parser.getRootNode());
}

TEST(XMLNodeSink, HasNoTreeAtFirst) {
    const XMLNodeSink sink(nullptr);
    EXPECT_EQ(nullptr, sink.root);
    EXPECT_EQ(nullptr, sink.log);
}

TEST(XMLNodeSink, ReleasesItsTreeOnce) {
    struct CountedNode : Node {
        explicit CountedNode(int& count) : releases(count) {}
        ~CountedNode() override { ++releases; }
        int& releases;
    };
    int releases = 0;
    {
        XMLNodeSink sink(nullptr);
        EXPECT_EQ(0, sink.onNodeTree(new CountedNode(releases)));
        EXPECT_EQ(0, releases);
    }
    EXPECT_EQ(1, releases);
}

TEST(XMLNodeSink, LogsEveryKindOfDiagnostic) {
    LogRecorder recorder;
    ZUKlog log(4, LogRecorder::callback, &recorder);
    XMLNodeSink sink(&log);
    EXPECT_EQ(0, sink.onWarning(String(L"w"), 1));
    EXPECT_EQ(0, sink.onError(String(L"e"), 2));
    EXPECT_EQ(0, sink.onCriticalError(String(L"c"), 0));
    ASSERT_EQ(3u, recorder.lines.size());
    EXPECT_TRUE(recorder.has(ZUKlog::kMax, "XML_parser", "Warning in line 1: w"));
    EXPECT_TRUE(recorder.has(ZUKlog::kMin, "XML_parser", "Error in line 2: e"));
    EXPECT_TRUE(recorder.has(ZUKlog::kMin, "XML_parser", "Error in line 0: c"));
}

TEST(XMLNodeSink, AcceptsDiagnosticsWithoutALog) {
    XMLNodeSink sink(nullptr);
    EXPECT_EQ(0, sink.onWarning(String(L"w"), 1));
    EXPECT_EQ(0, sink.onError(String(L"e"), 1));
    EXPECT_EQ(0, sink.onCriticalError(String(L"c"), 1));
}
}  // namespace
