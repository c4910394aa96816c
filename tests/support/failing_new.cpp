#include "tests/support/failing_new.h"

#include <new>

namespace {
constexpr int kNeverFail = -1;
thread_local int remaining = kNeverFail;
}  // namespace

// Stands before the C++ library's in the test program.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (remaining == 0) return nullptr;
    if (remaining > 0) --remaining;
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

FailingNew::FailingNew(int successes) {
    remaining = successes;
}
FailingNew::~FailingNew() {
    remaining = kNeverFail;
}
