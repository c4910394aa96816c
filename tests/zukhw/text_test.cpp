#include "scanners/zukhw/text.h"

#include <gtest/gtest.h>

#include "scanners/shared/xml_text.h"
#include "scanners/zukhw/octal_escapes.h"

namespace {

struct TextCase {
    std::string_view bytes;
    std::string_view expected;
};

TEST(CleanText, LeavesOneLineOfXmlCharacters) {
    using namespace std::string_view_literals;
    const TextCase cases[] = {
        {"", ""},
        {"plain text", "plain text"},
        {"  both  ends ", "both ends"},
        {"tab\tand\r\nline end\v\f", "tab and line end"},
        {"a\0b"sv, "ab"},
        {"bell\x07 rung", "bell rung"},
        {" \x01 ", ""},
        {"M\xC3\xBCller", "M\xC3\xBCller"},
        {"broken \xFF byte", "broken \xEF\xBF\xBD byte"},
        {"cut \xE2\x82", "cut \xEF\xBF\xBD"},
        {"overlong \xC0\xAF", "overlong \xEF\xBF\xBD\xEF\xBF\xBD"},
        {"surrogate \xED\xA0\x80", "surrogate \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"above \xF4\x90\x80\x80", "above \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"no character \xEF\xBF\xBF", "no character"},
        {"\xF0\x9F\x96\xA5 screen", "\xF0\x9F\x96\xA5 screen"},
    };
    for (const TextCase& c : cases) EXPECT_EQ(c.expected, cleanText(c.bytes)) << c.bytes;
}

TEST(XmlText, EscapesWhatWouldBeMarkup) {
    std::string out = "kept ";
    appendXmlText(&out, "<a href=\"b\">&'");
    EXPECT_EQ("kept &lt;a href=&quot;b&quot;&gt;&amp;'", out);
}

TEST(OctalEscapes, AreDecodedWhereTheyAreWhole) {
    const TextCase cases[] = {
        {"/mnt/my\\040disk", "/mnt/my disk"},
        {"\\134", "\\"},
        {"\\04", "\\04"},
        {"\\477", "\\477"},
        {"a\\011b", "a\tb"},
        {"\\", "\\"},
    };
    for (const TextCase& c : cases) EXPECT_EQ(c.expected, decodeOctalEscapes(c.bytes)) << c.bytes;
}

TEST(Lines, KeepEmptyOnesButTheLast) {
    EXPECT_EQ((std::vector<std::string_view>{"a", "", "b"}), lines("a\r\n\nb\n"));
}

TEST(UtcTime, CoversTheYearsOfFourDigits) {
    EXPECT_EQ("2026-11-20T22:05:45Z", utcTime(1795212345));
    EXPECT_EQ("1970-01-01T00:00:00Z", utcTime(0));
    EXPECT_EQ("", utcTime(253402300800));
    EXPECT_EQ("", utcTime(-62135596801));
    EXPECT_EQ("", utcTime(INT64_MIN));
    EXPECT_EQ("0001-01-01T00:00:00Z", utcTime(-62135596800));
    EXPECT_EQ("9999-12-31T23:59:59Z", utcTime(253402300799));
    EXPECT_EQ("1969-12-31T23:59:59Z", utcTime(-1));
    EXPECT_EQ("2000-02-29T12:00:00Z", utcTime(951825600));
    EXPECT_EQ("2024-02-29", utcDate(1709164800));
    EXPECT_EQ("2100-03-01", utcDate(4107542400));
    EXPECT_EQ("2026-11-20", utcDate(1795212345));
    EXPECT_EQ("", utcDate(253402300800));
}

}  // namespace
