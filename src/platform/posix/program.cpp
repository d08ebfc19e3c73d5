// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/program.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>

void PrepareProgram() {
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
    // Only the soft limit: child programs may raise theirs.
    rlimit core{};
    if (getrlimit(RLIMIT_CORE, &core) == 0) {
        core.rlim_cur = 0;
        setrlimit(RLIMIT_CORE, &core);
    }
}
