#pragma once

#include <signal.h>

#include <array>

// While one lives, the signals that would end the program are only noted, and a reader that has gone is no
// signal at all; its end delivers what was noted. So the library can clear its temporary directory away.
// The scanner gets a terminal's signals itself, which ends the scan; a second signal ends the program at
// once.
class EndingSignals {
  public:
    EndingSignals();
    ~EndingSignals();
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;

  private:
    static constexpr int kNoted[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

    std::array<struct sigaction, std::size(kNoted)> before_;
    struct sigaction pipeBefore_;
};
