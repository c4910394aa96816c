// What does a log message cost?
//
// With a callback: against opening, writing and closing the null device, which every message has to do.
// Without: against taking and releasing the lock.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string_view>

#include "bench/support/measure.h"
#include "frame/log.h"
#include "platform/mutex.h"

namespace {

constexpr int kRounds = 21;
constexpr int kMessages = 20000;

void openWriteClose() {
    constexpr std::string_view kText = "Retrieving field [PhysicalMemory] from group [3] instance [0]";
    for (int i = 0; i < kMessages; ++i) {
        const int null = open("/dev/null", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (write(null, kText.data(), kText.size()) < 0) std::perror("/dev/null");
        close(null);
    }
}

void lockUnlock() {
    static Mutex mutex;
    for (int i = 0; i < kMessages; ++i) {
        mutex.lock();
        mutex.unlock();
    }
}

void speak(ZUKlog& log) {
    for (int i = 0; i < kMessages; ++i) {
        log.traceMAX("ZUK_hw_get_value", "Retrieving field [%S] from group [%d] instance [%d]",
                     L"PhysicalMemory", 3, 0);
    }
}

void compare(const char* name, const std::function<void()>& work, const std::function<void()>& floor) {
    std::vector<double> ratios;
    std::vector<double> seconds;
    for (int round = 0; round < kRounds; ++round) {
        const double base = secondsOf(floor);
        seconds.push_back(secondsOf(work));
        ratios.push_back(seconds.back() / base);
    }
    std::printf("%-24s %6.2f x floor %8.0f ns a message\n", name, median(ratios),
                median(seconds) / kMessages * 1e9);
}

}  // namespace

int main() {
    ZUKlog heard(
        1, [](int, int, void*, const char*, const char*) {}, nullptr);
    ZUKlog unheard(1, nullptr, nullptr);
    compare(
        "with a callback", [&heard] { speak(heard); }, openWriteClose);
    compare(
        "with a null callback", [&unheard] { speak(unheard); }, lockUnlock);
    return 0;
}
