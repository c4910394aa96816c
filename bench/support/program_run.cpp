#include "bench/support/program_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <stdexcept>

namespace {
using Clock = std::chrono::steady_clock;

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// -1 when there is no such program.
pid_t start(const std::vector<std::string>& words) {
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = -1;
    const int error = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error == ENOENT) return -1;
    if (error != 0) throw std::runtime_error("cannot start " + words.front());
    return child;
}
}  // namespace

std::optional<ProgramRun> runProgram(const std::vector<std::string>& words, bool mayFail) {
    const Clock::time_point begin = Clock::now();
    const pid_t child = start(words);
    if (child < 0) return std::nullopt;
    rusage usage{};
    int status = 0;
    if (wait4(child, &status, 0, &usage) != child || (status != 0 && !mayFail)) {
        throw std::runtime_error(words.front() + " failed");
    }
    const std::chrono::duration<double> wall = Clock::now() - begin;
    return ProgramRun{secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime), wall.count(),
                      static_cast<double>(usage.ru_maxrss) * 1024};
}
