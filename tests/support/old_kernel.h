#pragma once

#include <cstddef>

// What a kernel may lack.
struct MissingCall {
    int number;    // of the system call
    int argument;  // compared with `value`; negative: the call is missing altogether
    unsigned value;
    int error;  // what it fails with
};

// Makes the calling process, and each one it starts, see a kernel that lacks the call. There is no way
// back: for a forked host only. False when this cannot be had here.
bool takeAway(const MissingCall& call);
