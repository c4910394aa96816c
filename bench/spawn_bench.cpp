// What does starting a child and waiting for it cost beside posix_spawn doing the same, and does it grow
// with the host?
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "bench/support/measure.h"
#include "platform/runtime.h"

namespace {

[[noreturn]] void fail(const char* what) {
    std::perror(what);
    std::exit(1);
}

constexpr int kRounds = 401;
constexpr char kProgram[] = "/bin/true";

// Null device in, pipe out, nothing else, no signal blocked or ignored: what Runtime does.
void spawn() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) fail("cannot open a pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    sigset_t set;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    sigemptyset(&set);
    posix_spawnattr_setsigmask(&attributes, &set);
    sigfillset(&set);
    posix_spawnattr_setsigdefault(&attributes, &set);

    char* const arguments[] = {const_cast<char*>(kProgram), nullptr};
    char* const environment[] = {nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, kProgram, &actions, &attributes, arguments, environment) != 0) {
        fail("posix_spawn failed");
    }
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    close(ends[1]);
    char byte = 0;
    while (read(ends[0], &byte, 1) > 0) {
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
}

void execute() {
    const std::unique_ptr<Process> process(Runtime().execute(L"/bin/true", "\0\0\0"));
    if (!process) fail("cannot start /bin/true");
    while (process->standardOutput()->read() >= 0) {
    }
    process->exitStatus();
}

void compare(std::size_t megabytes) {
    const std::size_t size = megabytes << 20U;
    void* memory =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    if (memory == MAP_FAILED) fail("not enough memory");
    std::vector<double> spawned;
    std::vector<double> executed;
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
        spawned.push_back(secondsOf(spawn));
        executed.push_back(secondsOf(execute));
        ratios.push_back(executed.back() / spawned.back());
    }
    munmap(memory, size);
    std::printf("%10zu %12.0f %12.0f %8.2f\n", megabytes, median(spawned) * 1e6, median(executed) * 1e6,
                median(ratios));
}

}  // namespace

int main() {
    std::printf("one child, us\n%10s %12s %12s %8s\n", "host, MB", "posix_spawn", "Runtime", "ratio");
    for (const std::size_t megabytes : {10, 400, 4000}) compare(megabytes);
}
