#include <gtest/gtest.h>

#include "platform/xml_node.h"
#include "tests/support/reading.h"

namespace {
// Compact markup that comes out as it went in.
const std::string_view kFixedPoints[] = {
    "<r/>",
    "<r a=\"1\" b=\"2\"><c/>text<d>more</d></r>",
    "<r><!-- comment --><?target data?><?bare?></r>",
    "<r>&amp; &lt; &gt; \" '</r>",
    "<r a=\"&amp; &lt; &gt; &quot; '\"/>",
    "<r>tab\tand\nline</r>",
    "<r a=\"&#9;&#10;&#13; \"/>",
    "<r>&#13;&#13;\n</r>",
    "<r> </r>",
    "<r>]]&gt;</r>",
    "<\xC3\xA9 \xC3\xA8=\"\xE2\x82\xAC\">\xF0\x9F\x98\x80</\xC3\xA9>",
    "<r>\xC2\x85\xE2\x80\xA8</r>",
    "<p:r xmlns:p=\"urn:p\"><p:a/></p:r>",
};

TEST(NodeWrite, GivesMarkupThatReadsAsTheSameTree) {
    for (const std::string_view markup : kFixedPoints) {
        const std::string once = readAndWritten(markup);
        EXPECT_EQ(markup, once);
        EXPECT_EQ(once, readAndWritten(once));
    }
}

TEST(NodeWrite, GivesTheSameTextInEveryMode) {
    const Reading reading("<r>\n  <a>1</a>\n</r>");
    for (const int mode : {-1, 0, 1, 2, 3})
        EXPECT_EQ("<r><a>1</a></r>", written(*reading.root(), mode)) << mode;
}

TEST(NodeWrite, WritesASubtree) {
    const Reading reading("<r><a b=\"c\">d<e/></a><f/></r>");
    EXPECT_EQ("<a b=\"c\">d<e/></a>", written(*childrenOf(*reading.root()).at(0)));
}

TEST(NodeWrite, WritesATextEscaped) {
    const Reading reading("<r>a &lt; b</r>");
    EXPECT_EQ("a &lt; b", written(*childrenOf(*reading.root()).at(0)));
}

TEST(NodeWrite, AddsToWhatTheStreamHolds) {
    const Reading reading("<r/>");
    std::ostringstream out;
    out << "before";
    reading.root()->write(out, 1);
    out << "after";
    EXPECT_EQ("before<r/>after", out.str());
}

TEST(NodeWrite, ReplacesWhatNoDocumentCanHold) {
    const struct {
        wchar_t character;
        const char* why;
    } kImpossible[] = {{-23, "negative"},        {0x01, "control"},      {0x1F, "control"},
                       {0xD800, "surrogate"},    {0xDFFF, "surrogate"},  {0xFFFE, "no character"},
                       {0xFFFF, "no character"}, {0x110000, "too large"}};
    for (const auto& c : kImpossible) {
        const wchar_t name[] = {L'a', c.character, L'\0'};
        Node node;
        node.name = String(name);
        EXPECT_EQ("<a\xEF\xBF\xBD/>", written(node)) << c.why;
    }
}

TEST(NodeWrite, WritesMoreThanItsBufferHolds) {
    std::string document = "<r>";
    for (int i = 0; i < 5000; ++i) document += "<a b=\"\xE2\x82\xAC\">&amp;</a>";
    document += "</r>";
    EXPECT_EQ(document, readAndWritten(document));
}
}  // namespace
