#include "tests/cli/terminal.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

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
