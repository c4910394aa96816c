#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "platform/file_descriptor.h"

// A child process that was started and not waited for yet.
struct Child {
    pid_t pid = -1;
    // Stands for the child even after its process id has gone to somebody else. Not valid on kernels
    // before 5.2, which know no such descriptor.
    FileDescriptor handle;
};

// Starts the program words[0] (a path) with exactly the entries of `environment` (NUL-terminated
// name=value texts up to the first empty one). The two descriptors become its standard input and output
// and must be greater than 2; standard error is the caller's, and no other descriptor is passed on.
// False, with nothing left behind, when the program could not be started.
bool startChild(const std::vector<std::string>& words, const char* environment, int input, int output,
                Child* child);

// Waits for the child's end, once. Its exit status, 128 + n when signal n killed it. It is the true one
// also when somebody else has waited for the child or the process ignores SIGCHLD, provided that the
// kernel keepsExitStatus(); else that costs the status and the result is 255.
int waitForEnd(const Child& child);

// True when the kernel still tells a child's exit status after somebody else has waited for it.
bool keepsExitStatus();
