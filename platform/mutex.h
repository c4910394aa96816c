#pragma once

#include <mutex>

// A plain, non-recursive lock.
class Mutex {
  public:
    Mutex();
    ~Mutex();
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock();
    void unlock();

  private:
    std::mutex mutex_;
};
