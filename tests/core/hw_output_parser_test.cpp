#include "hw/output_parser.h"

#include <gtest/gtest.h>

#include <memory>

#include "frame/xml_parser.h"
#include "tests/support/hardware_fixture.h"

namespace {

constexpr char kRun[] = "ZUK_hw_run";

class HwOutputParser : public HardwareFixture {
  protected:
    // The root of the parsed text; valid until the next call.
    const Node* parse(const std::string& xml) {
        parser = std::make_unique<XMLParser>(ctx->log, widen(folder.file("output.xml", xml)).c_str());
        EXPECT_EQ(0, parser->errors);
        log.clear();
        return parser->getRootNode();
    }
    int parseData(const std::string& xml) { return HW_parseHWData(ctx, parse(xml)); }

    std::unique_ptr<XMLParser> parser;
};

TEST_F(HwOutputParser, NullRootIs104WithAMessage) {
    log.clear();
    EXPECT_EQ(104, HW_parseHWData(ctx, nullptr));
    EXPECT_TRUE(log.has(0, kRun, "Error during a parse, no root data"));
}

TEST_F(HwOutputParser, RootWithoutAChildListIs104WithAMessage) {
    const Node* root = parse("<I>text</I>");
    const std::list<Node*>* children = nullptr;
    ASSERT_EQ(0, root->getChildren(&children));
    EXPECT_EQ(104, HW_parseHWData(ctx, children->front()));
    EXPECT_TRUE(log.has(0, kRun, "Error during a parse, no root data"));
}

TEST_F(HwOutputParser, RootWithoutChildrenHasNoInstances) {
    EXPECT_EQ(0, parseData("<AnyName/>"));
    EXPECT_TRUE(log.has(2, kRun, "Parse finish. 0 groups successfully retrieved"));
    for (int slot = 0; slot < 52; ++slot) EXPECT_TRUE(ctx->results.at(slot).empty());
}

TEST_F(HwOutputParser, InstancesKeepDocumentOrderAlsoInterleaved) {
    EXPECT_EQ(0, parseData("<I><Memory><A>1</A></Memory><IPAddress/><Memory><A>2</A></Memory></I>"));
    ASSERT_EQ(2u, ctx->results.at(3).size());
    EXPECT_EQ(L"1", ctx->results.at(3)[0].front().second);
    EXPECT_EQ(L"2", ctx->results.at(3)[1].front().second);
    EXPECT_EQ(1u, ctx->results.at(6).size());
    EXPECT_TRUE(log.has(2, kRun, "Parse finish. 3 groups successfully retrieved"));
}

TEST_F(HwOutputParser, IndentedFileParsesLikeACompactOne) {
    EXPECT_EQ(0, parseData("<I>\n  <Memory>\n    <A>1</A>\n  </Memory>\n</I>\n"));
    ASSERT_EQ(1u, ctx->results.at(3).size());
    EXPECT_EQ((HWInstance{{L"A", L"1"}}), ctx->results.at(3)[0]);
}

TEST_F(HwOutputParser, FieldsKeepTheirOrderAndDoubles) {
    EXPECT_EQ(0, parseData("<I><Memory><B>1</B><A>2</A><B>3</B></Memory></I>"));
    EXPECT_EQ((HWInstance{{L"B", L"1"}, {L"A", L"2"}, {L"B", L"3"}}), ctx->results.at(3).at(0));
}

TEST_F(HwOutputParser, FieldArraysPointIntoTheStoredInstances) {
    EXPECT_EQ(0, parseData("<I><Memory><A>1</A><B/></Memory><Memory/><Memory><C/></Memory></I>"));
    const auto& arrays = ctx->fields.at(3);
    ASSERT_EQ(3u, arrays.size());
    EXPECT_EQ(ctx->results.at(3)[0].front().first.c_str(), arrays[0][0]);
    EXPECT_STREQ(L"B", arrays[0][1]);
    EXPECT_EQ(nullptr, arrays[1]);
    EXPECT_STREQ(L"C", arrays[2][0]);
}

TEST_F(HwOutputParser, GroupThatIsNotEnabledIsStoredAllTheSame) {
    ASSERT_EQ(0, ctx->enabled[3]);
    EXPECT_EQ(0, parseData("<I><Memory/></I>"));
    EXPECT_EQ(1u, ctx->results.at(3).size());
}

struct BadShape {
    const char* xml;
    const char* location;  // of the message; null for none
    const char* text;
};

TEST_F(HwOutputParser, BadShapesAre104) {
    const BadShape kCases[] = {
        {"<I>text</I>", nullptr, nullptr},
        {"<I><!-- comment --></I>", nullptr, nullptr},
        {"<I><?target data?></I>", nullptr, nullptr},
        {"<I><Memory>text</Memory></I>", nullptr, nullptr},
        {"<I><Operating_System/></I>", kRun, "Error: No such group [Operating_System]"},
        {"<I><memory/></I>", kRun, "Error: No such group [memory]"},
        {"<I><Memory><A>1<B/></A></Memory></I>", "parseHWField()",
         "Error: unrecognized format of value in field [A]"},
        {"<I><Memory><A><!-- comment --></A></Memory></I>", "parseHWField()",
         "Error: unrecognized format of value in field [A]"},
    };
    for (const BadShape& c : kCases) {
        EXPECT_EQ(104, parseData(c.xml)) << c.xml;
        const bool silent = c.text == nullptr;
        EXPECT_EQ(silent ? 0u : 1u, log.lines.size()) << c.xml;
        if (silent) continue;
        EXPECT_TRUE(log.has(0, c.location, c.text)) << c.xml;
    }
}

TEST_F(HwOutputParser, InstancesBeforeAnErrorStayStored) {
    EXPECT_EQ(104, parseData("<I><Memory/><Nothing/><Memory/></I>"));
    EXPECT_EQ(1u, ctx->results.at(3).size());
    EXPECT_EQ(1u, ctx->fields.at(3).size());
}

TEST_F(HwOutputParser, InstanceWithAnErrorIsNotStored) {
    EXPECT_EQ(104, parseData("<I><Memory><A>1</A><B><C/></B></Memory></I>"));
    EXPECT_TRUE(ctx->results.at(3).empty());
}

TEST_F(HwOutputParser, GroupOfANullNodeIsEmpty) {
    HWInstance instance;
    EXPECT_EQ(0, HW_parseHWGroup(ctx, &instance, nullptr));
    EXPECT_TRUE(instance.empty());
}

TEST_F(HwOutputParser, FieldOfANullNodeKeepsTheValue) {
    std::wstring value = L"as it was";
    EXPECT_EQ(0, HW_parseHWField(ctx, nullptr, value));
    EXPECT_EQ(L"as it was", value);
}

struct ValueCase {
    const char* xml;
    std::wstring value;
};

TEST_F(HwOutputParser, FieldValues) {
    const ValueCase kCases[] = {
        {"<A/>", L""},
        {"<A></A>", L""},
        {"<A>text</A>", L"text"},
        {"<A> \t</A>", L" \t"},
        {"<A>a&amp;b&lt;c</A>", L"a&b<c"},
        {"<A>a<![CDATA[<&]]>b</A>", L"a<&b"},
        {"<A>&#xe9;&#x1f600;</A>", L"\u00e9\U0001f600"},
        {"<A key=\"value\">text</A>", L"text"},
    };
    for (const ValueCase& c : kCases) {
        std::wstring value;
        EXPECT_EQ(0, HW_parseHWField(ctx, parse(c.xml), value)) << c.xml;
        EXPECT_EQ(c.value, value) << c.xml;
    }
}

}  // namespace
