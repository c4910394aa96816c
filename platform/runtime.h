#pragma once

#include "platform/xml_node.h"

// The bytes a child process writes to its standard output.
class Stream {
  public:
    virtual ~Stream();
    // The next byte, 0 to 255; negative at the end of the output or after a read error.
    virtual int read() = 0;
};

// A child process that was started. Destroying it closes its output, which ends a child that goes on
// writing, and waits for its end, so no zombie is left behind. On kernels before 6.15 SIGCHLD is blocked
// in the thread that started it until its end was waited for; the same thread must do that.
class Process {
  public:
    virtual ~Process();
    // Waits for the end: read the output to its end first, since a child with more to say than a pipe holds
    // (64 KiB) waits for its reader. The exit status, 128 + n for a child killed by signal n; the same at
    // every call. It is the true one also when the process ignores SIGCHLD or waits for the child itself;
    // where the kernel (before 6.15) has forgotten it then, it is 255.
    virtual int exitStatus() = 0;
    // The same value as exitStatus().
    virtual int resultValue() = 0;
    // Belongs to the process object.
    virtual Stream* standardOutput() = 0;
};

// Starts child processes.
class Runtime {
  public:
    Runtime();
    virtual ~Runtime();

    // Starts `command` and returns its process object, which the caller deletes, or null when it could
    // not be started. The first word is the program's path (no shell, no PATH search); arguments are
    // split at blanks outside double quotes, and the quotes are dropped. `environment` holds
    // NUL-terminated name=value entries and ends at the first empty one; the child gets exactly these.
    virtual Process* execute(const String& command, const char* environment);
};
