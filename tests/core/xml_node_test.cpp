#include "platform/xml_node.h"

#include <gtest/gtest.h>

#include "tests/support/reading.h"

namespace {
const StringMap::Entry kEntries[] = {{L"guid", L"1"}, {L"name", L"one"}};

TEST(StringMap, IsEmptyByDefault) {
    EXPECT_EQ(0, StringMap().count);
}

TEST(StringMap, GivesEntriesInOrder) {
    const StringMap map(kEntries, 2);
    String key;
    String value;
    EXPECT_EQ(2, map.count);
    EXPECT_EQ(0, map.getEntry(1, key, value));
    EXPECT_STREQ(L"name", key.text);
    EXPECT_STREQ(L"one", value.text);
}

TEST(StringMap, RefusesIndexesOutsideAndLeavesTheStringsAlone) {
    const StringMap map(kEntries, 2);
    for (const int index : {-1, 2, 1000}) {
        String key(L"key");
        String value(L"value");
        EXPECT_NE(0, map.getEntry(index, key, value)) << index;
        EXPECT_STREQ(L"key", key.text) << index;
        EXPECT_STREQ(L"value", value.text) << index;
    }
}

TEST(Node, IsAnEmptyElementByDefault) {
    const Node node;
    const std::list<Node*>* children = nullptr;
    EXPECT_EQ(0, node.getType());
    EXPECT_STREQ(L"", node.name.text);
    EXPECT_EQ(0, node.attributes->count);
    ASSERT_EQ(0, node.getChildren(&children));
    EXPECT_TRUE(children->empty());
}

TEST(Node, NamesItsKind) {
    const Reading reading("<e>text<!--c--><?i?></e>");
    const auto children = childrenOf(*reading.root());
    ASSERT_EQ(3u, children.size());
    EXPECT_STREQ("element", reading.root()->getTypeName());
    EXPECT_STREQ("text", children[0]->getTypeName());
    EXPECT_STREQ("comment", children[1]->getTypeName());
    EXPECT_STREQ("instruction", children[2]->getTypeName());
}

TEST(NodeSink, IgnoresDiagnosticsByDefault) {
    struct TreeSink : NodeSink {
        int onNodeTree(Node*) override { return 7; }
    };
    TreeSink sink;
    EXPECT_EQ(0, sink.onWarning(String(L"w"), 1));
    EXPECT_EQ(0, sink.onError(String(L"e"), 1));
    EXPECT_EQ(0, sink.onCriticalError(String(L"c"), 1));
}
}  // namespace
