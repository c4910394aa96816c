#include "cli/ending_signals.h"

namespace {

volatile sig_atomic_t noted = 0;

void note(int signal) {
    noted = signal;
}

}  // namespace

EndingSignals::EndingSignals() {
    struct sigaction action {};
    action.sa_handler = note;
    action.sa_flags = SA_RESETHAND | SA_RESTART;
    for (std::size_t i = 0; i < before_.size(); ++i) {
        sigaction(kNoted[i], nullptr, &before_[i]);
        // One that is ignored, as under nohup, stays so.
        if (before_[i].sa_handler != SIG_IGN) sigaction(kNoted[i], &action, nullptr);
    }
    action = {};
    action.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &action, &pipeBefore_);
}

EndingSignals::~EndingSignals() {
    for (std::size_t i = 0; i < before_.size(); ++i) sigaction(kNoted[i], &before_[i], nullptr);
    sigaction(SIGPIPE, &pipeBefore_, nullptr);
    if (noted != 0) raise(noted);
}
