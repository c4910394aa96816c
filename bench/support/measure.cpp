#include "bench/support/measure.h"

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

double secondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

ChildRun runSelf(const std::vector<std::string>& arguments) {
    static const char kSelf[] = "/proc/self/exe";
    std::vector<char*> argv{const_cast<char*>(kSelf)};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    rusage usage{};
    int status = 0;
    const double seconds = secondsOf([&] {
        pid_t child = 0;
        if (posix_spawn(&child, kSelf, nullptr, nullptr, argv.data(), environ) != 0) {
            throw std::runtime_error("cannot start a child process");
        }
        wait4(child, &status, 0, &usage);
    });
    if (status != 0) throw std::runtime_error("the child process failed: " + arguments.front());
    return {seconds, static_cast<double>(usage.ru_maxrss) * 1024};
}
