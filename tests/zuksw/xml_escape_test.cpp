#include "scanners/zuksw/output/xml_escape.h"

#include <gtest/gtest.h>

namespace zuksw {
namespace {

struct EscapeCase {
    std::string bytes;
    const char* attribute;
};

TEST(XmlEscape, GivesAsciiThatCanBeUndone) {
    const EscapeCase cases[] = {
        {"plain text~", "plain text~"},
        {"a&b<c>\"", "a&amp;b&lt;c&gt;&quot;"},
        {"\t\n\r", "&#9;&#10;&#13;"},
        {"\xC3\xA9", "&#233;"},
        {"\xF0\x9F\x98\x80", "&#128512;"},
        {"\xE9", "\\xE9"},
        {std::string("\0\x01", 2), "\\x00\\x01"},
        {"\\x41", "\\x5Cx41"},
        {"\\y", "\\y"},
        {"\xED\xA0\x80", "\\xED\\xA0\\x80"},
        {"\xEF\xBF\xBE", "\\xEF\\xBF\\xBE"},
        {"\x7F", "&#127;"},
    };
    for (const EscapeCase& c : cases) {
        std::string out;
        appendXmlAttribute(c.bytes, &out);
        EXPECT_EQ(c.attribute, out);
    }
}

TEST(XmlEscape, KeepsLineBreaksInText) {
    std::string out;
    appendXmlText("a\n\tb\r", &out);
    EXPECT_EQ("a\n\tb&#13;", out);
}

}  // namespace
}  // namespace zuksw
