// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/confinement.h"

#include <fontconfig/fontconfig.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>

#include "platform/contracts/system_error.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/program.h"
#include "platform/reports/failure.h"
#include "platform/reports/file_output.h"
#include "platform/reports/worker/landlock.h"
#include "platform/reports/worker/system_calls.h"

namespace reports::worker {
namespace {

constexpr rlim_t MostFiles = 1024;

// Also the hard limit: it cannot be raised again.
void Limit(__rlimit_resource_t resource, rlim_t most, const char* what) {
    rlimit limit{};
    getrlimit(resource, &limit);
    limit.rlim_cur = limit.rlim_max = std::min(limit.rlim_max, most);
    if (setrlimit(resource, &limit) != 0) {
        throw RuntimeError(WorkerFailed, std::string("The report process cannot limit its ") + what + ": " +
                                             SystemErrorText(errno));
    }
}

void LimitResources(std::int64_t megabytes) {
    Limit(RLIMIT_CORE, 0, "core dump");
    Limit(RLIMIT_NOFILE, MostFiles, "open files");
    Limit(RLIMIT_FSIZE, LargestDocument, "files");
#if !defined(__SANITIZE_ADDRESS__)  // whose shadow has many times the size of the memory
    Limit(RLIMIT_AS, static_cast<rlim_t>(megabytes) << 20, "memory");
#endif
}

void EndWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0);
    // The parent decides when it ends: a signal to the group of a terminal must not look like a crash.
    for (const int ignored : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(ignored, SIG_IGN);
    }
}

// A query that sorts more than SQLite keeps in memory writes a file. SQLite's own choice is /var/tmp, where
// this process may not write. This stands before the first use of SQLite, which looks once.
void TellTemporaryPlace() {
    try {
        setenv("SQLITE_TMPDIR", TemporaryPlace().c_str(), 1);
    } catch (const RuntimeError&) {
        // A report that needs a temporary file reports that there is no place for it.
    }
}

// What the user's PostgreSQL programs prove themselves with opens the team's store, which no report may read:
// libpq finds no password and no certificate here (PostgreSQL 15, sections 34.15, 34.16 and 34.19).
void ForgetServerPasswords() {
    unsetenv("PGPASSWORD");
    unsetenv("PGSERVICE");
    for (const char* name : {"PGPASSFILE", "PGSERVICEFILE", "PGSSLCERT", "PGSSLKEY"}) {
        setenv(name, "/dev/null/none", 1);
    }
}

void OfferToOomKiller() {
    constexpr int Preferred = 500;
    std::ofstream("/proc/self/oom_score_adj") << Preferred;
}

}  // namespace

std::string Confine(const Confinement& confinement) {
    PrepareProgram();
    EndWithParent();
    OfferToOomKiller();
    TellTemporaryPlace();
    ForgetServerPasswords();
    LimitResources(confinement.megabytes);
    // Fontconfig writes its caches now, as long as it may.
    FcInit();
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    std::string lacking;
    if (!RestrictFiles(confinement.readable)) {
        if (!confinement.readable.empty()) {
            throw RuntimeError(
                WorkerFailed, "The kernel has no Landlock: the folders of OXC_REPORT_FOLDERS cannot be kept");
        }
        lacking = "Landlock";
    }
    if (!RefuseSystemCalls()) {
        lacking += lacking.empty() ? "seccomp filters" : " and seccomp filters";
    }
    return lacking;
}

}  // namespace reports::worker
