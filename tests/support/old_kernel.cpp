#include "tests/support/old_kernel.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include <vector>

bool takeAway(const MissingCall& call) {
    const unsigned numberAt = offsetof(seccomp_data, nr);
    const unsigned argumentAt = static_cast<unsigned>(offsetof(seccomp_data, args) +
                                                      sizeof(__u64) * static_cast<unsigned>(call.argument));
    std::vector<sock_filter> program;
    const auto passUnless = [&](unsigned offset, unsigned value) {
        program.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offset));
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 1, 0));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    };
    passUnless(numberAt, static_cast<unsigned>(call.number));
    if (call.argument >= 0) passUnless(argumentAt, call.value);
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(call.error)));

    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}
