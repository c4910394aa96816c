#include <poll.h>
#include <sys/ioctl.h>
#include <sys/utsname.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "platform/child.h"

namespace {

constexpr int kSignalled = 128;
constexpr int kLostStatus = 255;

// The kernel's struct pidfd_info, as far as every version of the call has it; the system's headers are
// older than the call.
struct HandleInfo {
    std::uint64_t mask;
    std::uint64_t cgroup;
    std::uint32_t ids[11];
    std::int32_t waitStatus;  // as waitpid() gives it; only with kHasExit in the mask
};
static_assert(sizeof(HandleInfo) == 64);
constexpr unsigned long kGetInfo = _IOWR(0xFF, 11, HandleInfo);
constexpr std::uint64_t kHasExit = 1U << 3;

bool waitOn(idtype_t type, int id, siginfo_t* end) {
    int result = 0;
    do {
        result = waitid(type, static_cast<id_t>(id), end, WEXITED);
    } while (result < 0 && errno == EINTR);
    return result == 0;
}

// False with ECHILD when there is nothing to wait for: somebody else has, or SIGCHLD is ignored.
bool waitFor(const Child& child, siginfo_t* end) {
    if (child.handle.valid()) {
        if (waitOn(P_PIDFD, child.handle.get(), end)) return true;
        if (errno != EINVAL) return false;  // kernels before 5.4 do not wait on a handle
    }
    return waitOn(P_PID, child.pid, end);
}

// The status of a child that somebody else has waited for or is about to.
int statusFromHandle(const FileDescriptor& handle) {
    if (!handle.valid() || !keepsExitStatus()) return kLostStatus;
    // The hang-up comes when that other wait is through; until then there may be no status yet.
    pollfd gone{handle.get(), 0, 0};
    while (poll(&gone, 1, -1) < 0 && errno == EINTR) {
    }
    HandleInfo info{};
    info.mask = kHasExit;
    if (ioctl(handle.get(), kGetInfo, &info) != 0 || (info.mask & kHasExit) == 0) return kLostStatus;
    if (WIFSIGNALED(info.waitStatus)) return kSignalled + WTERMSIG(info.waitStatus);
    return WEXITSTATUS(info.waitStatus);
}

}  // namespace

int waitForEnd(const Child& child) {
    siginfo_t end{};
    if (!waitFor(child, &end)) return errno == ECHILD ? statusFromHandle(child.handle) : kLostStatus;
    return end.si_code == CLD_EXITED ? end.si_status : kSignalled + end.si_status;
}

bool keepsExitStatus() {
    utsname system{};
    if (uname(&system) != 0) return false;
    char* rest = nullptr;
    const long major = std::strtol(system.release, &rest, 10);
    const long minor = *rest == '.' ? std::strtol(rest + 1, nullptr, 10) : 0;
    return std::make_pair(major, minor) >= std::make_pair(6L, 15L);
}
