#pragma once

#include <sys/wait.h>
#include <unistd.h>

// Runs `body`, which returns an exit status from 0 to 127, in a process of its own, for what must not be
// done to the test program itself: closing its standard streams, say. Gives that status, or 128 + n when
// signal n ended the process.
template <typename Body>
int inForkedHost(Body body) {
    const pid_t pid = fork();
    if (pid == 0) _exit(body());
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}
