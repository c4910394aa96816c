#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

// While one lives, what is allocated may stay for ever: a ZUK_init that fails keeps what it made on
// purpose. The only exception from "nothing leaks" that the tests make.
class DeliberateLeak {
  public:
#if defined(__SANITIZE_ADDRESS__)
    DeliberateLeak() {
        __lsan_disable();
    }
    ~DeliberateLeak() {
        __lsan_enable();
    }
#else
    DeliberateLeak() {}
    ~DeliberateLeak() {}
#endif
    DeliberateLeak(const DeliberateLeak&) = delete;
    DeliberateLeak& operator=(const DeliberateLeak&) = delete;
};
