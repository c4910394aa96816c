#pragma once

#include "frame/log.h"

// Logging through a logger that may be absent: then nothing is done.
template <typename... Args>
void traceMAX(ZUKlog* log, const char* location, const char* format, Args... args) {
    if (log != nullptr) log->traceMAX(location, format, args...);
}

template <typename... Args>
void traceMID(ZUKlog* log, const char* location, const char* format, Args... args) {
    if (log != nullptr) log->traceMID(location, format, args...);
}

template <typename... Args>
void traceMIN(ZUKlog* log, const char* location, const char* format, Args... args) {
    if (log != nullptr) log->traceMIN(location, format, args...);
}
