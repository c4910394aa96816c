#include "scanners/zukhw/jep106.h"

#include <gtest/gtest.h>

namespace {

struct CodeCase {
    const char* text;
    const char* name;
};

TEST(Jep106, NamesTheCodesThatFirmwareLeaves) {
    const CodeCase cases[] = {
        {"80CE", "Samsung"},
        {"0x80AD", "SK hynix"},
        {"80ce000080ce", "Samsung"},       // chip and register makers follow
        {"00CE00B300CE", "Samsung"},       // the bank's parity left out
        {"CE00000000000000", "Samsung"},   // the whole field of an older module
        {"7F98000000000000", "Kingston"},  // one continuation code before the identity
        {"7F7F7F7F7FEF0000", ""},          // not in the table
        {"859B", "Crucial"},
        {"80CD", ""},  // identity without odd parity: no code
        {"8098", "Toshiba"},
        {"0198", "Kingston"},
        {"0443", "Ramaxel"},
        {"7F7F7F7F43000000", "Ramaxel"},
    };
    for (const CodeCase& c : cases) EXPECT_EQ(c.name, jep106NameOfText(c.text)) << c.text;
}

TEST(Jep106, LeavesAlone) {
    for (const char* text : {"", "0x", "CE", "Samsung", "80CG", "80C", "7F7F", "0000", "80 E", "0x0x80CE"}) {
        EXPECT_EQ("", jep106NameOfText(text)) << text;
    }
}

TEST(Jep106, IgnoresTheParityOfNumbers) {
    EXPECT_EQ("Samsung", jep106Name(0x80, 0xCE));
    EXPECT_EQ("Samsung", jep106Name(0, 0x4E));
    EXPECT_EQ("", jep106Name(0x7E, 0x4E));
}

}  // namespace
