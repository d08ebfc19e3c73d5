// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/system_calls.h"

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>

namespace reports::worker {
namespace {

using Filter = std::unique_ptr<void, decltype(&seccomp_release)>;

constexpr std::array Refused{
    // other programs and processes
    "execve", "execveat", "fork", "vfork", "ptrace", "process_vm_readv", "process_vm_writev", "kcmp", "kill",
    "tkill", "rt_sigqueueinfo", "rt_tgsigqueueinfo", "pidfd_open", "pidfd_getfd", "pidfd_send_signal",
    "process_madvise", "setpriority", "ioprio_set", "setns", "unshare",
    // file systems
    "mount", "umount", "umount2", "pivot_root", "chroot", "move_mount", "open_tree", "fsopen", "fsconfig",
    "fsmount", "fspick", "mount_setattr", "name_to_handle_at", "open_by_handle_at", "quotactl", "quotactl_fd",
    "swapon", "swapoff", "mknod", "mknodat", "fanotify_init",
    // what Landlock leaves to the owner of a file, truncation before Linux 6.2: a settings file with a
    // password
    // must not become everybody's
    "chmod", "fchmod", "fchmodat", "fchmodat2", "chown", "fchown", "lchown", "fchownat", "setxattr",
    "lsetxattr", "fsetxattr", "removexattr", "lremovexattr", "fremovexattr", "utime", "utimes", "utimensat",
    "futimesat", "truncate", "truncate64",
    // the kernel
    "init_module", "finit_module", "delete_module", "create_module", "kexec_load", "kexec_file_load", "bpf",
    "perf_event_open", "userfaultfd", "io_uring_setup", "io_uring_enter", "io_uring_register", "add_key",
    "request_key", "keyctl", "syslog", "acct", "reboot", "iopl", "ioperm", "modify_ldt", "vm86",
    "personality", "lookup_dcookie",
    // the machine
    "settimeofday", "clock_settime", "clock_adjtime", "adjtimex", "stime", "sethostname", "setdomainname",
    "vhangup",
    // users
    "setuid", "setgid", "setreuid", "setregid", "setresuid", "setresgid", "setgroups", "setfsuid", "setfsgid",
    "capset"};

// Families of sockets that lead to no database.
constexpr std::array Families{AF_PACKET, AF_BLUETOOTH, AF_ALG, AF_VSOCK, AF_KEY, AF_CAN, AF_TIPC, AF_XDP};

// A call that this machine does not have needs no rule: failures are ignored.
void Refuse(scmp_filter_ctx filter, const char* call) {
    const int number = seccomp_syscall_resolve_name(call);
    if (number != __NR_SCMP_ERROR) {
        seccomp_rule_add(filter, SCMP_ACT_ERRNO(EPERM), number, 0);
    }
}

void RefuseByArguments(scmp_filter_ctx filter) {
    const std::uint32_t refuse = SCMP_ACT_ERRNO(EPERM);
    // The flags of clone3 are out of a filter's sight. The library then falls back to clone.
    seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0);
    seccomp_rule_add(filter, refuse, SCMP_SYS(clone), 1, SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD, 0));
    // abort() signals its own process.
    seccomp_rule_add(filter, refuse, SCMP_SYS(tgkill), 1,
                     SCMP_A0(SCMP_CMP_NE, static_cast<scmp_datum_t>(getpid())));
    // To cut a file that is opened for reading needs no right of Landlock before Linux 6.2.
    constexpr scmp_datum_t Ways = O_TRUNC | O_ACCMODE, CutsByReading = O_TRUNC | O_RDONLY;
    seccomp_rule_add(filter, refuse, SCMP_SYS(open), 1, SCMP_A1(SCMP_CMP_MASKED_EQ, Ways, CutsByReading));
    seccomp_rule_add(filter, refuse, SCMP_SYS(openat), 1, SCMP_A2(SCMP_CMP_MASKED_EQ, Ways, CutsByReading));
    seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(openat2),
                     0);  // its flags are out of sight, too
    // Keys for the terminal that the scheduler was started from. The kernel reads 32 bits of the request.
    constexpr scmp_datum_t RequestBits = 0xFFFFFFFF;
    for (const int request : {TIOCSTI, TIOCLINUX}) {
        seccomp_rule_add(filter, refuse, SCMP_SYS(ioctl), 1,
                         SCMP_A1(SCMP_CMP_MASKED_EQ, RequestBits, static_cast<scmp_datum_t>(request)));
    }
    // The limits of another process.
    seccomp_rule_add(filter, refuse, SCMP_SYS(prlimit64), 1, SCMP_A0(SCMP_CMP_NE, 0));
    for (const int family : Families) {
        seccomp_rule_add(filter, refuse, SCMP_SYS(socket), 1,
                         SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(family)));
    }
}

}  // namespace

bool RefuseSystemCalls() {
    const Filter filter(seccomp_init(SCMP_ACT_ALLOW), &seccomp_release);
    if (filter == nullptr) {
        return false;
    }
    // A program of another architecture cannot start anyway.
    seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
    // A tree, as most calls are allowed only after all comparisons.
    constexpr std::uint32_t BinaryTree = 2;
    seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_OPTIMIZE, BinaryTree);
    for (const char* call : Refused) {
        Refuse(filter.get(), call);
    }
    RefuseByArguments(filter.get());
    return seccomp_load(filter.get()) == 0;
}

}  // namespace reports::worker
