// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/linking.h"

#include <system_error>

#include "platform/base/database_files.h"
#include "platform/base/paths.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/running_mark.h"
#include "platform/postgresql/postgresql_session.h"
#include "platform/sqlite/sqlite_session.h"
#include "tools/oxc_store/store_place.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

fs::path With(const fs::path& file, const char* end) {
    return file.string() + end;
}

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

void Rename(const fs::path& from, const fs::path& to) {
    std::error_code failed;
    fs::rename(from, to, failed);
    if (failed) {
        throw RuntimeError(
            NumberOfSystemError(failed.value(), err::PathFileAccess),
            "The file \"" + from.string() + "\" cannot be renamed: " + SystemErrorText(failed.value()));
    }
}

// The last program that closes a database removes its log. A log that stays belongs to another program.
void MoveDatabaseAway(const fs::path& file) {
    const fs::path kept = With(file, ReplacedEnding);
    if (Exists(kept)) {
        RefuseStore("Not linked: there is already a file \"" + kept.string() + "\"");
    }
    { const SqliteSession closesTheLog(paths::FromMachine(file)); }
    if (Exists(With(file, "-wal"))) {
        RefuseStore("Not linked: another program has the file \"" + file.string() + "\" open");
    }
    Rename(file, kept);
}

void RefuseScheduler(const SchedulersKeptOut& schedulers, IfRunning ifRunning, const fs::path& file,
                     const std::string& begin) {
    if (schedulers.IsRunning() && ifRunning == IfRunning::Refuse) {
        RefuseStore(begin + ": a scheduler runs in the folder \"" + file.parent_path().string() +
                    "\"; stop it first (--force goes on, and runs may be mailed again)");
    }
}

}  // namespace

void LinkStore(const fs::path& file, const Link& link, IfRunning ifRunning) {
    const SchedulersKeptOut schedulers(file.parent_path());
    RefuseScheduler(schedulers, ifRunning, file, "Not linked");
    PostgresqlSession(link).Query("select count(*) from ReportScheduler");
    if (Exists(file) && !IsLink(file)) {
        MoveDatabaseAway(file);
    }
    AtomicFile target(file);
    target.Write(TextOfLink(link));
    target.Commit();
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
}

void UnlinkStore(const fs::path& file, IfRunning ifRunning) {
    const SchedulersKeptOut schedulers(file.parent_path());
    RefuseScheduler(schedulers, ifRunning, file, "Not unlinked");
    if (!IsLink(file)) {
        RefuseStore("The file \"" + file.string() + "\" is no link");
    }
    const fs::path kept = With(file, ReplacedEnding);
    if (Exists(kept)) {
        Rename(kept, file);
        return;
    }
    std::error_code failed;
    fs::remove(file, failed);
    if (failed) {
        throw RuntimeError(err::PathFileAccess, "The file \"" + file.string() + "\" cannot be removed: " +
                                                    SystemErrorText(failed.value()));
    }
}

}  // namespace tools
