#include "cli/page.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

Page standardPage() {
    if (isatty(STDOUT_FILENO) == 0) return {};
    constexpr std::size_t kNarrowest = 40;  // below, every word would stand alone on its line
    constexpr std::size_t kUsual = 80;
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return {known ? std::max<std::size_t>(size.ws_col, kNarrowest) : kUsual, true};
}
