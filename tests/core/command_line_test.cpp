#include "platform/command_line.h"

#include <gmock/gmock.h>

namespace {

struct Case {
    const wchar_t* command;
    std::vector<std::string> words;
};

TEST(CommandLine, SplitsAtBlanksOutsideQuotes) {
    const Case cases[] = {
        {L"", {}},
        {L"   ", {}},
        {L"/h/zukhw", {"/h/zukhw"}},
        {L"/h/zukhw -c \"/tmp/a b.xml\" -o \"/tmp/o.xml\"",
         {"/h/zukhw", "-c", "/tmp/a b.xml", "-o", "/tmp/o.xml"}},
        {L"  a   b  ", {"a", "b"}},
        {L"a \"\" b", {"a", "", "b"}},
        {L"a \"\"", {"a", ""}},
        {L"\"\"", {""}},
        {L"a\"b c\"d", {"ab cd"}},
        {L"\"a\"\"b\"", {"ab"}},
        {L"a \"b c", {"a", "b c"}},  // never closed: reaches to the end
        {L"a \"", {"a", ""}},
        {L"a 'b c' \\d", {"a", "'b", "c'", "\\d"}},  // nothing but blanks and double quotes is special
        {L"a\tb", {"a\tb"}},
        {L"$HOME;*|&", {"$HOME;*|&"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.words, splitCommandLine(c.command)) << testing::PrintToString(c.command);
}

TEST(CommandLine, NarrowsToTheLowByte) {
    EXPECT_EQ(std::vector<std::string>{"\xE4\x41"}, splitCommandLine(L"\u00E4\u0141"));
}

TEST(CommandLine, NarrowedCharactersAreNeitherQuotesNorBlanks) {
    // U+0122 and U+0120 end in the bytes of the double quote and the blank.
    const std::vector<std::string> words{"a", "b\"c d"};
    EXPECT_EQ(words, splitCommandLine(L"a b\u0122c\u0120d"));
}

}  // namespace
