// Documents made to exhaust a reader.
#include <gtest/gtest.h>

#include "tests/support/reading.h"

namespace {
std::string repeated(std::string_view text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

TEST(NodeReaderLimits, ReadsWritesAndReleasesAMillionLevels) {
    constexpr std::size_t kDepth = 1000000;
    const Reading reading(repeated("<a>", kDepth) + repeated("</a>", kDepth));
    ASSERT_NE(nullptr, reading.root());
    EXPECT_EQ(repeated("<a>", kDepth - 1) + "<a/>" + repeated("</a>", kDepth - 1), written(*reading.root()));
}

TEST(NodeReaderLimits, ReadsAndWritesATextOf20Megabytes) {
    const std::string document = "<r>" + repeated("twenty bytes of text", 1 << 20) + "</r>";
    const Reading reading(document);
    ASSERT_NE(nullptr, reading.root());
    EXPECT_EQ(1u, childrenOf(*reading.root()).size());
    EXPECT_EQ(document, written(*reading.root()));
}

TEST(NodeReaderLimits, ReadsAndWritesATextOf20MegabytesOfWhiteSpace) {
    const std::string document = "<r>" + repeated("      \t  \n", 2 << 20) + "</r>";
    const Reading reading(document);
    ASSERT_NE(nullptr, reading.root());
    EXPECT_EQ(document, written(*reading.root()));
}

TEST(NodeReaderLimits, ReadsAndWrites200000Attributes) {
    std::string document = "<r";
    for (int i = 0; i < 200000; ++i) document += " a" + std::to_string(i) + "=\"" + std::to_string(i) + "\"";
    document += "/>";
    const Reading reading(document);
    ASSERT_NE(nullptr, reading.root());
    EXPECT_EQ(200000, reading.root()->attributes->count);
    EXPECT_EQ(document, written(*reading.root()));
}

TEST(NodeReaderLimits, ReadsASingleTokenThatFillsManyBlocks) {
    const std::string document = "<r><!--" + repeated("x", 10 << 20) + "--></r>";
    const Reading reading(document);
    ASSERT_NE(nullptr, reading.root());
    EXPECT_EQ(document, written(*reading.root()));
}

TEST(NodeReaderLimits, KeepsBlanksThatTurnOutToBeTextLate) {
    const std::string document = "<r>" + repeated(" <a/>", 200000) + "x" + repeated(" <a/>", 200000) + "</r>";
    EXPECT_EQ(document, readAndWritten(document));
}

std::string nestedEntities(std::string_view seed, int levels, int fan) {
    std::string document = "<!DOCTYPE r [<!ENTITY e0 '" + std::string(seed) + "'>";
    for (int i = 1; i <= levels; ++i) {
        const std::string reference = "&e" + std::to_string(i - 1) + ";";
        document += "<!ENTITY e" + std::to_string(i) + " '" +
                    repeated(reference, static_cast<std::size_t>(fan)) + "'>";
    }
    return document + "]><r>&e" + std::to_string(levels) + ";</r>";
}

struct BombCase {
    const char* name;
    std::string document;
};

TEST(NodeReaderLimits, EndsAnEntityBombAsAnError) {
    const BombCase kBombs[] = {
        {"text", nestedEntities("lol", 10, 10)},
        {"elements", nestedEntities("<b/>", 10, 10)},
        {"attributes", nestedEntities("<b c='d'/>", 10, 10)},
        {"white space", nestedEntities(" ", 10, 10)},
        {"one large entity many times",
         "<!DOCTYPE r [<!ENTITY e '" + repeated("x", 100000) + "'>]><r>" + repeated("&e;", 30000) + "</r>"},
        {"in an attribute value",
         "<!DOCTYPE r [<!ENTITY e '" + repeated("x", 100000) + "'>]><r a='" + repeated("&e;", 30000) + "'/>"},
    };
    for (const BombCase& c : kBombs) {
        const Reading reading(c.document);
        EXPECT_EQ(1, reading.errorCount) << c.name;
        EXPECT_EQ(nullptr, reading.root()) << c.name;
    }
}

TEST(NodeReaderLimits, RefusesALongChainOfEntities) {
    const Reading reading(nestedEntities("x", 100000, 1));
    ASSERT_EQ(1u, reading.sink.diagnostics.size());
    EXPECT_EQ(L"too many declarations", reading.sink.diagnostics[0].message);
}

TEST(NodeReaderLimits, ExpandsAChainOfEntitiesThatIsNotTooLong) {
    EXPECT_EQ("<r>x</r>", readAndWritten(nestedEntities("x", 999, 1)));
}
TEST(NodeReaderLimits, RefusesALongListOfAttributeDefaults) {
    std::string document = "<!DOCTYPE r [<!ATTLIST r";
    for (int i = 0; i < 100000; ++i) document += " a" + std::to_string(i) + " CDATA 'x'";
    const Reading reading(document + ">]><r/>");
    ASSERT_EQ(1u, reading.sink.diagnostics.size());
    EXPECT_EQ(L"too many declarations", reading.sink.diagnostics[0].message);
}

TEST(NodeReaderLimits, RefusesAttributeDefaultsThatFillManyElements) {
    const std::string type = "<!DOCTYPE r [<!ATTLIST a b CDATA '" + repeated("x", 1000) + "'>]>";
    const Reading reading(type + "<r>" + repeated("<a/>", 100000) + "</r>");
    ASSERT_EQ(1u, reading.sink.diagnostics.size());
    EXPECT_EQ(L"too many attribute defaults", reading.sink.diagnostics[0].message);
}

TEST(NodeReaderLimits, GivesAttributesTheirDefaults) {
    const std::string type = "<!DOCTYPE r [<!ATTLIST r a CDATA 'x' b CDATA 'y'>]>";
    EXPECT_EQ("<r b=\"z\" a=\"x\"/>", readAndWritten(type + "<r b='z'/>"));
}
}  // namespace
