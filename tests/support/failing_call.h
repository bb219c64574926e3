#pragma once

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include <bit>
#include <cstddef>
#include <functional>
#include <iterator>
#include <thread>

namespace lumowatt {

/// A system call that is made to fail.
struct FailingCall {
  unsigned number = 0;       // SYS_...
  unsigned error = 0;        // value of errno
  unsigned exemptFlags = 0;  // the call succeeds if its third argument contains any of these flags
};

/// Runs `action` in a new thread with a seccomp filter that makes the system call fail.
inline void runWithFailingCall(const FailingCall& call, const std::function<void()>& action) {
  std::thread([&] {
    constexpr std::size_t lowHalf = std::endian::native == std::endian::little ? 0 : 4;
    sock_filter instructions[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call.number, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2]) + lowHalf),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, call.exemptFlags, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | call.error),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{.len = std::size(instructions), .filter = instructions};
    ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter), 0);
    action();
  }).join();
}

}  // namespace lumowatt
