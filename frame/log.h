#pragma once

#include <cstdarg>

// Formats diagnostic messages and hands them to the caller's callback. It filters nothing: what to show
// is decided by the callback, which is told the message's level and the logger's own.
//
// Formats are printf's; "%S" takes a wide string and is converted by the current locale, so a message
// with a character outside that locale's set is dropped, as is an empty one. Messages of all loggers of
// the process are delivered one at a time: a callback must not call anything that logs.
class ZUKlog {
  public:
    using Callback = void (*)(int message_level, int logger_level, void* user_data, const char* location,
                              const char* text);

    static constexpr int kMin = 0;  // errors and warnings
    static constexpr int kMid = 1;  // notable conditions
    static constexpr int kMax = 2;  // tracing detail

    // These two leave the object's members unset and must not be used to make a working logger.
    ZUKlog();
    explicit ZUKlog(int loggerLevel);
    // `sink` may be null: then nothing is ever reported. `sinkData` is handed back to it untouched.
    ZUKlog(int loggerLevel, Callback sink, void* sinkData);
    virtual ~ZUKlog();

    void traceMAX(const char* location, const char* format, ...);
    void traceMID(const char* location, const char* format, ...);
    void traceMIN(const char* location, const char* format, ...);
    void trace(int messageLevel, const char* location, const char* format, ...);

    // Formats and delivers one message; the caller holds the lock. A message of any length is delivered
    // whole or, when it cannot be formatted, not at all.
    void vsprintf(int messageLevel, const char* location, const char* format, va_list args);

    // 1 takes the process-wide lock of all loggers, any other value releases it.
    void mutex(int op);

    Callback callback;
    void* userData;
    int level;
};
