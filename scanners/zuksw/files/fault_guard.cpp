#include "scanners/zuksw/files/fault_guard.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>

namespace zuksw {

// What the handler reads: fixed places, so that it needs no lock and no memory.
struct FaultGuard::Place {
    std::atomic<bool> taken{false};
    std::atomic<std::uintptr_t> begin{0};
    std::atomic<std::uintptr_t> end{0};
    std::atomic<bool> tripped{false};
};

namespace {

std::array<FaultGuard::Place, 1024> places;
std::uintptr_t pageSize = 4096;

bool mend(std::uintptr_t address) {
    for (FaultGuard::Place& place : places) {
        if (address < place.begin.load() || address >= place.end.load()) continue;
        const std::uintptr_t page = address & ~(pageSize - 1);
        void* zeros = ::mmap(reinterpret_cast<void*>(page), pageSize, PROT_READ,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
        place.tripped.store(true);
        return zeros != MAP_FAILED;
    }
    return false;
}

void onBusError(int /*signal*/, siginfo_t* info, void* /*context*/) {
    const int saved = errno;
    if (!mend(reinterpret_cast<std::uintptr_t>(info->si_addr))) std::signal(SIGBUS, SIG_DFL);
    errno = saved;
}

}  // namespace

FaultGuard::FaultGuard(const void* begin, std::size_t size) {
    for (Place& place : places) {
        if (place.taken.exchange(true)) continue;
        place.tripped.store(false);
        place.begin.store(reinterpret_cast<std::uintptr_t>(begin));
        place.end.store(reinterpret_cast<std::uintptr_t>(begin) + size);
        place_ = &place;
        return;
    }
}

FaultGuard::~FaultGuard() {
    if (place_ == nullptr) return;
    place_->end.store(0);
    place_->begin.store(0);
    place_->taken.store(false);
}

bool FaultGuard::tripped() const {
    return place_ != nullptr && place_->tripped.load();
}

void installFaultHandler() {
    pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    struct sigaction action = {};
    action.sa_sigaction = onBusError;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    ::sigaction(SIGBUS, &action, nullptr);
}

}  // namespace zuksw
