// What the reader makes of well-formed documents.
#include <gtest/gtest.h>

#include "tests/support/reading.h"

namespace {
TEST(NodeReader, DeliversOneTreeAndNoDiagnostics) {
    const Reading reading("<Root/>");
    EXPECT_EQ(0, reading.status);
    EXPECT_EQ(0, reading.errorCount);
    EXPECT_EQ(1, reading.sink.trees);
    EXPECT_TRUE(reading.sink.diagnostics.empty());
    ASSERT_NE(nullptr, reading.root());
    EXPECT_STREQ(L"Root", reading.root()->name.text);
}

TEST(NodeReader, GivesChildrenInDocumentOrder) {
    const Reading reading("<r>one<a/>two<!--three--><?four five?><b/></r>");
    const struct {
        int type;
        const wchar_t* name;
    } kExpected[] = {{1, L"one"}, {0, L"a"}, {1, L"two"}, {2, L"three"}, {3, L"four five"}, {0, L"b"}};

    const auto children = childrenOf(*reading.root());
    ASSERT_EQ(std::size(kExpected), children.size());
    for (std::size_t i = 0; i < children.size(); ++i) {
        EXPECT_EQ(kExpected[i].type, children[i]->getType()) << i;
        EXPECT_STREQ(kExpected[i].name, children[i]->name.text) << i;
    }
}

TEST(NodeReader, GivesAChildlessElementAnEmptyList) {
    const Reading reading("<r/>");
    const std::list<Node*>* children = nullptr;
    EXPECT_EQ(0, reading.root()->getChildren(&children));
    EXPECT_TRUE(children->empty());
}

TEST(NodeReader, GivesNoListToAnythingButElements) {
    const Reading reading("<r>text<!--comment--><?instruction?></r>");
    for (const Node* child : childrenOf(*reading.root())) {
        const std::list<Node*>* children = nullptr;
        EXPECT_NE(0, child->getChildren(&children)) << child->getTypeName();
        EXPECT_EQ(nullptr, children) << child->getTypeName();
    }
}

TEST(NodeReader, GivesAttributesInDocumentOrder) {
    const Reading reading("<r z='1' a='2 &lt; 3&#10;' b=''/>");
    const std::vector<std::pair<std::wstring, std::wstring>> expected = {
        {L"z", L"1"}, {L"a", L"2 < 3\n"}, {L"b", L""}};

    std::vector<std::pair<std::wstring, std::wstring>> found;
    String key;
    String value;
    for (int i = 0; reading.root()->attributes->getEntry(i, key, value) == 0; ++i) {
        found.emplace_back(key.text, value.text);
    }
    EXPECT_EQ(expected, found);
}

TEST(NodeReader, GivesEveryNodeAnAttributeMap) {
    const Reading reading("<r><a/>text</r>");
    EXPECT_EQ(0, reading.root()->attributes->count);
    for (const Node* child : childrenOf(*reading.root())) EXPECT_EQ(0, child->attributes->count);
}

TEST(NodeReader, MakesAdjacentCharacterDataOneText) {
    const Reading reading("<r>a\nb &amp;&#x20AC;<![CDATA[ <c> ]]>d\r\ne</r>");
    const auto children = childrenOf(*reading.root());
    ASSERT_EQ(1u, children.size());
    EXPECT_STREQ(L"a\nb &\u20AC <c> d\ne", children[0]->name.text);
}

TEST(NodeReader, ExpandsInternalEntities) {
    EXPECT_EQ("<r>one two</r>", readAndWritten("<!DOCTYPE r [<!ENTITY e 'one'>]><r>&e; two</r>"));
    EXPECT_EQ("<r><a/></r>", readAndWritten("<!DOCTYPE r [<!ENTITY e '<a/>'>]><r>&e;</r>"));
}

struct LayoutCase {
    std::string_view document;
    std::string_view tree;
};

const LayoutCase kLayoutCases[] = {
    {"<r>\n  <a>1</a>\n\t<b>2</b>\r\n</r>", "<r><a>1</a><b>2</b></r>"},
    {"<r> <a/> <b/> </r>", "<r><a/><b/></r>"},
    {"<r> <a> <b/> </a> </r>", "<r><a><b/></a></r>"},
    {"<r> </r>", "<r> </r>"},  // nothing but white space
    {"<r><a> \n </a></r>", "<r><a> \n </a></r>"},
    {"<r> <a/> x <b/> </r>", "<r> <a/> x <b/> </r>"},        // mixed content keeps it all,
    {"<r> <a/> <b/> <c/>x</r>", "<r> <a/> <b/> <c/>x</r>"},  // also what stood before the text
    {"<r>x <a> <b/> </a> </r>", "<r>x <a><b/></a> </r>"},    // each element for itself
    {"<r><a>x</a> <b/> </r>", "<r><a>x</a><b/></r>"},
    {"<r> <!--c--> <a/> <?i?> </r>", "<r><!--c--><a/><?i?></r>"},  // neither text nor element
    {"<r> <!--c--> </r>", "<r> <!--c--> </r>"},
    {"<r> x<!--c--> <?i?>y </r>", "<r> x<!--c--> <?i?>y </r>"},
    {"<r> <![CDATA[ ]]> <a/></r>", "<r><a/></r>"},
    {"<r> <![CDATA[x]]> <a/></r>", "<r> x <a/></r>"},
    {"<r>&#160;<a/></r>", "<r>\xC2\xA0<a/></r>"},  // not white space in XML
    {"<r>\n<a>\n<b>\n</b>\n</a>\n</r>", "<r><a><b>\n</b></a></r>"},
};

TEST(NodeReader, DropsLayoutAndNothingElse) {
    for (const LayoutCase& c : kLayoutCases) EXPECT_EQ(c.tree, readAndWritten(c.document)) << c.document;
}

TEST(NodeReader, LeavesOutWhatStandsAroundTheDocumentElement) {
    EXPECT_EQ("<r/>", readAndWritten("<?xml version='1.0'?>\n<!--a--> <?b?>\n<r/>\n<!--c--><?d?>\n"));
}

struct EncodingCase {
    const char* name;
    std::string_view document;
};

using std::string_view_literals::operator""sv;
const EncodingCase kEncodingCases[] = {
    {"UTF-8 without a declaration", "<r>\xC3\xA9</r>"},
    {"UTF-8 with a byte order mark", "\xEF\xBB\xBF<r>\xC3\xA9</r>"},
    {"UTF-8", "<?xml version='1.0' encoding='UTF-8'?><r>\xC3\xA9</r>"},
    {"ISO-8859-1", "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE9</r>"},
    {"US-ASCII", "<?xml version='1.0' encoding='US-ASCII'?><r>&#233;</r>"},
    {"UTF-16, little end first", "\xFF\xFE<\0r\0>\0\xE9\0<\0/\0r\0>\0"sv},
    {"UTF-16, big end first", "\xFE\xFF\0<\0r\0>\0\xE9\0<\0/\0r\0>"sv},
};

TEST(NodeReader, DecodesTheEncodingADocumentDeclares) {
    for (const EncodingCase& c : kEncodingCases) {
        EXPECT_EQ("<r>\xC3\xA9</r>", readAndWritten(c.document)) << c.name;
    }
}

TEST(NodeReader, DecodesCharactersBeyondTheFirstPlane) {
    const Reading reading("\xFF\xFE<\0r\0>\0\x3D\xD8\x00\xDE<\0/\0r\0>\0"sv);
    EXPECT_STREQ(L"\U0001F600", childrenOf(*reading.root()).at(0)->name.text);
}

TEST(NodeReader, DecodesNames) {
    const Reading reading("<\xC3\xA9 \xC3\xA8='1'/>");
    String key;
    String value;
    reading.root()->attributes->getEntry(0, key, value);
    EXPECT_STREQ(L"\u00E9", reading.root()->name.text);
    EXPECT_STREQ(L"\u00E8", key.text);
}

TEST(NodeReader, NarrowsThePathToTheLowBytes) {
    const TemporaryFolder folder;
    folder.file("\xE9.xml", "<r/>");
    RecordingSink sink;
    NodeReader reader(sink);
    EXPECT_EQ(0, reader.process(String((widen(folder.path()) + L"/\u20E9.xml").c_str()), 0));
}

TEST(NodeReader, ReadsOneFileAfterTheOther) {
    const TemporaryFolder folder;
    const std::wstring broken = widen(folder.file("broken.xml", "<r>"));
    const std::wstring sound = widen(folder.file("sound.xml", "<r/>"));
    RecordingSink sink;
    NodeReader reader(sink);
    EXPECT_NE(0, reader.process(String(broken.c_str()), 0));
    EXPECT_EQ(1, reader.errorCount);
    EXPECT_EQ(0, reader.process(String(sound.c_str()), 0));
    EXPECT_EQ(0, reader.errorCount);
}

TEST(NodeReaderSettings, DepthLimitRefusesDeeperElements) {
    const auto limit = [](NodeReader& reader) { reader.depthLimit = 2; };
    EXPECT_EQ(0, Reading("<a><b/><b/></a>", limit).errorCount);
    const Reading tooDeep("<a>\n<b><c/></b></a>", limit);
    EXPECT_EQ(1, tooDeep.errorCount);
    EXPECT_EQ(nullptr, tooDeep.root());
    EXPECT_EQ(2, tooDeep.sink.diagnostics.at(0).line);
}

TEST(NodeReaderSettings, KeepLayoutKeepsEveryText) {
    const Reading reading("<r> <a/>\n</r>", [](NodeReader& reader) { reader.keepLayout = true; });
    EXPECT_EQ("<r> <a/>\n</r>", written(*reading.root()));
}

TEST(NodeReaderSettings, DropCommentsLeavesThemOut) {
    const Reading reading("<r>a<!--b-->c<?d?></r>", [](NodeReader& reader) { reader.dropComments = true; });
    EXPECT_EQ("<r>ac<?d?></r>", written(*reading.root()));
}

TEST(NodeReaderSettings, DropInstructionsLeavesThemOut) {
    const Reading reading("<r>a<!--b-->c<?d?></r>",
                          [](NodeReader& reader) { reader.dropInstructions = true; });
    EXPECT_EQ("<r>a<!--b-->c</r>", written(*reading.root()));
}
}  // namespace
