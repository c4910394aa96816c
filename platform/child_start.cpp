#include <sched.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "platform/blocked_signals.h"
#include "platform/child.h"

// clone() under the name that thread sanitizers leave alone: in a host built with one, clone() would book
// the child as a fork, in the memory that it shares with us.
extern "C" int __clone(int (*run)(void*), void* stack, int flags, void* argument, ...);

namespace {

// What the child needs to know, and its answer: it runs in this process's memory.
struct Launch {
    char* const* arguments;
    char* const* environment;
    int input;
    int output;
    bool failed;
};

// Everything from here to the program's start happens in the child while the thread that made it stands
// still. Memory and thread-local data are that thread's, so nothing but plain system calls is allowed:
// no allocation, no lock, no code that a sanitizer watches, which would book the child's doings as ours.
#define ZUK_IN_CHILD __attribute__((no_sanitize("address", "thread", "undefined")))

// Handlers must be gone before the mask is: they would run on the host's data. Ignored signals stay
// ignored over the program's start unless they are reset too.
ZUK_IN_CHILD void resetSignals() {
    static constexpr std::size_t kSetSize = _NSIG / 8;
    alignas(8) static const unsigned char kDefault[64] = {};  // a zeroed action, whatever its layout
    alignas(8) static const unsigned char kEmptySet[kSetSize] = {};
    for (int number = 1; number < _NSIG; ++number) {
        syscall(SYS_rt_sigaction, number, kDefault, nullptr, kSetSize);
    }
    syscall(SYS_rt_sigprocmask, SIG_SETMASK, kEmptySet, nullptr, kSetSize);
}

ZUK_IN_CHILD int runChild(void* argument) {
    auto* launch = static_cast<Launch*>(argument);
    if (syscall(SYS_dup3, launch->input, STDIN_FILENO, 0) >= 0 &&
        syscall(SYS_dup3, launch->output, STDOUT_FILENO, 0) >= 0) {
        closefrom(STDERR_FILENO + 1);
        resetSignals();
        syscall(SYS_execve, launch->arguments[0], launch->arguments, launch->environment);
    }
    launch->failed = true;
    return 127;
}

// The system's interface takes char* and leaves the texts alone.
std::vector<char*> argumentPointers(const std::vector<std::string>& words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<char*> entryPointers(const char* block) {
    std::vector<char*> pointers;
    for (; *block != '\0'; block += std::strlen(block) + 1) pointers.push_back(const_cast<char*>(block));
    pointers.push_back(nullptr);
    return pointers;
}

// The child borrows our memory until it runs its program, so the cost does not grow with the host, and
// we stand still meanwhile, so a stack within our own frame is enough for it.
Child cloneChild(Launch* launch) {
    sigset_t all;
    sigfillset(&all);
    const BlockedSignals noHandlerMeetsTheChild(all);
    const int error = errno;

    alignas(16) std::array<char, 16 * 1024> stack;
    int handle = -1;
    Child child;
    child.pid = __clone(runChild, stack.data() + stack.size(), CLONE_VM | CLONE_VFORK | CLONE_PIDFD | SIGCHLD,
                        launch, &handle);
    child.handle.reset(handle);
    errno = error;  // the child's failed calls have written ours
    return child;
}

}  // namespace

bool startChild(const std::vector<std::string>& words, const char* environment, int input, int output,
                Child* child) {
    if (words.empty()) return false;
    const std::vector<char*> arguments = argumentPointers(words);
    const std::vector<char*> entries = entryPointers(environment);
    Launch launch{arguments.data(), entries.data(), input, output, false};
    *child = cloneChild(&launch);
    if (child->pid < 0) return false;
    if (launch.failed) waitForEnd(*child);
    return !launch.failed;
}
