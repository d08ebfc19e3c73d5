// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/program.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>
#include <cstring>

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

std::string EndOfProcess(int exitCode, int signal) {
    if (signal == 0) {
        return "ended with exit code " + std::to_string(exitCode);
    }
    const char* const words = sigdescr_np(signal);
    return "was ended by signal " + std::to_string(signal) +
           (words != nullptr ? " (" + std::string(words) + ")" : std::string());
}
