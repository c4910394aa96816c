#pragma once

#include <atomic>
#include <cstddef>

namespace zuksw {

/** A mapping of a file that may be cut short while it is read. Reading behind the new end raises SIGBUS;
 * while a guard stands, such a page becomes a page of zeros instead and tripped() says so. A longjmp out of
 * the handler would leave locks of whoever was reading behind. */
class FaultGuard {
  public:
    FaultGuard(const void* begin, std::size_t size);
    ~FaultGuard();
    FaultGuard(const FaultGuard&) = delete;
    FaultGuard& operator=(const FaultGuard&) = delete;

    /** False when too many guards stand: then the mapping must not be read. */
    bool stands() const { return place_ != nullptr; }
    bool tripped() const;

    struct Place;

  private:
    Place* place_ = nullptr;
};

/** Call once, before the first guard. */
void installFaultHandler();

}  // namespace zuksw
