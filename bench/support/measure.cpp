#include "bench/support/measure.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace {
double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

double threadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// Starts this program with its standard output going to `output`.
pid_t startSelf(const std::vector<std::string>& arguments, int output) {
    static const char kSelf[] = "/proc/self/exe";
    std::vector<char*> argv{const_cast<char*>(kSelf)};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t child = -1;
    posix_spawn(&child, kSelf, &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return child;
}
}  // namespace

double secondsOf(const std::function<void()>& work) {
    const double begin = threadSeconds();
    work();
    return threadSeconds() - begin;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

ChildRun runSelf(const std::vector<std::string>& arguments) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    const pid_t child = startSelf(arguments, ends[1]);
    close(ends[1]);
    char report[32] = "";
    const ssize_t length = read(ends[0], report, sizeof(report) - 1);
    close(ends[0]);

    rusage usage{};
    int status = 0;
    if (wait4(child, &status, 0, &usage) != child || status != 0 || length <= 0) {
        throw std::runtime_error("the child process failed: " + arguments.front());
    }
    return {secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime), std::stod(report) * 1024};
}

void reportPeak() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word != "VmHWM:") continue;
        status >> word;
        std::puts(word.c_str());
        std::fflush(stdout);
        return;
    }
}
