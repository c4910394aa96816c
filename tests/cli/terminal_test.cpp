#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/cli/zuk_program.h"

using testing::HasSubstr;

namespace {

// What the command writes to a terminal that is `columns` wide.
std::string onTerminal(const std::string& command, unsigned short columns) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = columns;
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        _exit(127);
    }
    std::string written;
    char buffer[4096];
    for (ssize_t count; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
        written.append(buffer, static_cast<std::size_t>(count));
    }
    waitpid(child, nullptr, 0);
    close(terminal);
    return written;
}

}  // namespace

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
