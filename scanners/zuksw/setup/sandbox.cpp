#include "scanners/zuksw/setup/sandbox.h"

#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <type_traits>

#include "platform/file_descriptor.h"

namespace zuksw {
namespace {

// The sanitizers look for leaks from a process of their own.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

constexpr std::uint64_t kWriting =
    LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
    LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR |
    LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
    LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;

// Without a rule that allows it, whatever is handled is denied everywhere.
bool denyWriting() {
    landlock_ruleset_attr rules = {};
    rules.handled_access_fs = kWriting;
    const FileDescriptor ruleset(
        static_cast<int>(::syscall(SYS_landlock_create_ruleset, &rules, sizeof rules.handled_access_fs, 0)));
    return ruleset.valid() && ::syscall(SYS_landlock_restrict_self, ruleset.get(), 0) == 0;
}

constexpr const char* kForbidden[] = {
    "execve",
    "execveat",
    "ptrace",
    "socket",
    "socketpair",
    "connect",
    "bind",
    "listen",
    "accept",
    "accept4",
    "sendto",
    "sendmsg",
    "sendmmsg",
    "mount",
    "umount2",
    "move_mount",
    "open_tree",
    "fsopen",
    "fsmount",
    "pivot_root",
    "chroot",
    "unlink",
    "unlinkat",
    "rmdir",
    "rename",
    "renameat",
    "renameat2",
    "link",
    "linkat",
    "symlink",
    "symlinkat",
    "mkdir",
    "mkdirat",
    "mknod",
    "mknodat",
    "chmod",
    "fchmodat",
    "chown",
    "lchown",
    "fchownat",
    "truncate",
    "setxattr",
    "lsetxattr",
    "removexattr",
    "lremovexattr",
    "utimensat",
    "init_module",
    "finit_module",
    "delete_module",
    "kexec_load",
    "bpf",
    "perf_event_open",
    "process_vm_readv",
    "process_vm_writev",
    "setuid",
    "setgid",
    "setresuid",
    "setresgid",
    "setns",
    "unshare",
    "reboot",
    "swapon",
    "swapoff",
    "keyctl",
    "add_key",
    "request_key",
    "io_uring_setup",
    "userfaultfd",
    "vfork",
    "fork",
};

struct ReleaseFilter {
    void operator()(void* filter) const { seccomp_release(filter); }
};

bool addRules(scmp_filter_ctx filter) {
    for (const char* name : kForbidden) {
        const int number = seccomp_syscall_resolve_name(name);
        if (number == __NR_SCMP_ERROR || (kSanitized && number == SCMP_SYS(ptrace))) continue;
        const int result = seccomp_rule_add(filter, SCMP_ACT_ERRNO(EPERM), number, 0);
        if (result != 0 && result != -EDOM) return false;  // a call that this processor does not have
    }
    if (kSanitized) return true;
    // Threads yes, processes no. The flags of clone3 lie in memory, where a filter cannot look; without it
    // the C library falls back to clone.
    if (seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) != 0) return false;
    const scmp_arg_cmp noThread = {0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0};
    return seccomp_rule_add_array(filter, SCMP_ACT_ERRNO(EPERM), SCMP_SYS(clone), 1, &noThread) == 0;
}

bool filterCalls() {
    const std::unique_ptr<std::remove_pointer_t<scmp_filter_ctx>, ReleaseFilter> filter(
        seccomp_init(SCMP_ACT_ALLOW));
    return filter && addRules(filter.get()) && seccomp_load(filter.get()) == 0;
}

}  // namespace

std::string enterSandbox() {
    std::string missing;
    const auto note = [&missing](const char* what) {
        if (!missing.empty()) missing += ", ";
        missing += what;
    };
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) note("no_new_privs");
    if (!denyWriting()) note("landlock");
    if (!filterCalls()) note("seccomp");
    return missing;
}

void lowerPriority(int nice) {
    errno = 0;
    const int now = ::nice(nice);
    (void)now;  // a system that refuses runs the scan as it is
    constexpr int kWhoProcess = 1;
    constexpr int kIdleClass = 3 << 13;
    ::syscall(SYS_ioprio_set, kWhoProcess, 0, kIdleClass);
}

}  // namespace zuksw
