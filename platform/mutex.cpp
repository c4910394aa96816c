#include "platform/mutex.h"

Mutex::Mutex() = default;
Mutex::~Mutex() = default;
void Mutex::lock() {
    mutex_.lock();
}
void Mutex::unlock() {
    mutex_.unlock();
}
