#include "frame/log.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "frame/file.h"
#include "platform/mutex.h"

namespace {

struct Release {
    void operator()(char* block) const { std::free(block); }
};
using Buffer = std::unique_ptr<char, Release>;

// Holds the lock of all loggers, also when a callback written in C++ throws through us.
class Lock {
  public:
    explicit Lock(ZUKlog& log) : log_(log) { log_.mutex(1); }
    ~Lock() { log_.mutex(0); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

  private:
    ZUKlog& log_;
};

// The length of the formatted message; negative when it cannot be formatted.
int measure(const char* format, va_list args) {
    // Without this the stream allocates a buffer of its own for every message. It outlives the stream.
    char buffer[BUFSIZ];
    const File null(std::fopen("/dev/null", "we"));
    if (!null) return -1;
    std::setvbuf(null.get(), buffer, _IOFBF, sizeof buffer);
    return std::vfprintf(null.get(), format, args);
}

}  // namespace

ZUKlog::ZUKlog() {
    ZUKlog(0, nullptr, nullptr);
}
ZUKlog::ZUKlog(int loggerLevel) {
    ZUKlog(loggerLevel, nullptr, nullptr);
}
ZUKlog::ZUKlog(int loggerLevel, Callback sink, void* sinkData)
    : callback(sink), userData(sinkData), level(loggerLevel) {}
ZUKlog::~ZUKlog() = default;

void ZUKlog::mutex(int op) {
    // Made at the first call, destroyed when the library is unloaded or the process exits.
    static Mutex mutex;
    if (op == 1) {
        mutex.lock();
    } else {
        mutex.unlock();
    }
}

void ZUKlog::vsprintf(int messageLevel, const char* location, const char* format, va_list args) {
    if (format == nullptr || callback == nullptr) return;

    va_list again;
    va_copy(again, args);
    const int length = measure(format, args);
    const auto size = static_cast<std::size_t>(length < 0 ? 0 : length) + 5;
    const Buffer text(length > 0 ? static_cast<char*>(std::malloc(size)) : nullptr);
    if (text && std::vsnprintf(text.get(), size, format, again) == length) {
        callback(messageLevel, level, userData, location, text.get());
    }
    va_end(again);
}

void ZUKlog::traceMAX(const char* location, const char* format, ...) {
    const Lock lock(*this);
    va_list args;
    va_start(args, format);
    vsprintf(kMax, location, format, args);
    va_end(args);
}

void ZUKlog::traceMID(const char* location, const char* format, ...) {
    const Lock lock(*this);
    va_list args;
    va_start(args, format);
    vsprintf(kMid, location, format, args);
    va_end(args);
}

void ZUKlog::traceMIN(const char* location, const char* format, ...) {
    const Lock lock(*this);
    va_list args;
    va_start(args, format);
    vsprintf(kMin, location, format, args);
    va_end(args);
}

void ZUKlog::trace(int messageLevel, const char* location, const char* format, ...) {
    const Lock lock(*this);
    va_list args;
    va_start(args, format);
    vsprintf(messageLevel, location, format, args);
    va_end(args);
}
