#include "scanners/shared/packages/deb822.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Every item on a line: name=value|continuation, -- for the end of a paragraph, ! for a bad line.
std::string itemsOf(std::string_view text) {
    using Item = Deb822Reader::Item;
    Deb822Reader reader(text);
    std::string items;
    for (Item item = reader.next(); item != Item::End; item = reader.next()) {
        if (item == Item::EndOfParagraph) items += "--\n";
        if (item == Item::BadLine) items += "!\n";
        if (item != Item::Field) continue;
        items.append(reader.name()).append("=").append(reader.value()).append("|");
        items.append(reader.continuation()).append("\n");
    }
    return items;
}

struct Deb822Case {
    std::string_view what;
    std::string_view text;
    std::string_view items;
};

TEST(Deb822, FieldsContinuationsAndParagraphs) {
    const Deb822Case cases[] = {
        {"nothing", "", ""},
        {"empty lines only", "\n\n \n", ""},
        {"one field", "A: 1\n", "A=1|\n--\n"},
        {"no line end", "A: 1", "A=1|\n--\n"},
        {"no blank after the colon, many at the end", "A:1 \t\r\n", "A=1|\n--\n"},
        {"a colon in the value", "A: b: c\n", "A=b: c|\n--\n"},
        {"no value", "A:\nB: 2\n", "A=|\nB=2|\n--\n"},
        {"continuation", "A: 1\n 2\n\t3\nB: 4\n", "A=1| 2\n\t3\n\nB=4|\n--\n"},
        {"two paragraphs, many empty lines", "\nA: 1\n\n\nB: 2\n\n", "A=1|\n--\nB=2|\n--\n"},
        {"a line of blanks ends a paragraph", "A: 1\n  \nB: 2\n", "A=1|\n--\nB=2|\n--\n"},
        {"no colon", "A: 1\nfoo\nB: 2\n", "A=1|\n!\nB=2|\n--\n"},
        {"no name", ": 1\n", "!\n--\n"},
        {"a blank in the name", "A b: 1\n", "!\n--\n"},
        {"nothing to go on with", " 1\n\nA: 1\n", "!\n--\nA=1|\n--\n"},
    };
    for (const Deb822Case& c : cases) EXPECT_EQ(itemsOf(c.text), c.items) << c.what;
}

}  // namespace
