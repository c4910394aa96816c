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

TEST(Terminal, NoLineOfThisMachineIsWider) {
    const ZukProgram zuk;
    for (const int width : {40, 80, 120}) {
        const auto columns = static_cast<unsigned short>(width);
        std::istringstream lines(onTerminal("LC_ALL=C.UTF-8 " + zuk.command() + "hw", columns));
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line); ++count) {
            line.erase(line.find_last_not_of('\r') + 1);
            const auto isHead = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
            EXPECT_LE(std::count_if(line.begin(), line.end(), isHead), columns) << line;
        }
        EXPECT_GT(count, 100U);
    }
}
