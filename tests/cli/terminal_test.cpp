#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/terminal.h"
#include "tests/cli/zuk_program.h"

using testing::HasSubstr;

TEST(Terminal, ItsWidthIsKeptTo) {
    const ZukProgram zuk;
    zuk.installScannerThatFinds(
        "<Memory><Flags>aaaa bbbb cccc dddd eeee ffff gggg hhhh iiii</Flags></Memory>");
    EXPECT_EQ("Memory\r\n  Flags  aaaa bbbb cccc dddd eeee ffff\r\n         gggg hhhh iiii\r\n",
              onTerminal(zuk.command() + "hw memory --home " + zuk.path("home"), 40));
}

TEST(Terminal, OneWithoutAWidthIsTakenFor80Columns) {
    const ZukProgram zuk;
    const std::string value(100, 'x');
    zuk.installScannerThatFinds("<Memory><Flags>" + value + "</Flags></Memory>");
    EXPECT_THAT(onTerminal(zuk.command() + "hw memory --home " + zuk.path("home"), 0),
                HasSubstr("  Flags  " + std::string(71, 'x') + "\r\n"));
}
