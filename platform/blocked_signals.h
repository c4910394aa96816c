#pragma once

#include <csignal>

// Keeps signals from the calling thread until destroyed, which must happen in the same thread.
class BlockedSignals {
  public:
    explicit BlockedSignals(const sigset_t& signals) { pthread_sigmask(SIG_BLOCK, &signals, &previous_); }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

  private:
    sigset_t previous_;
};
