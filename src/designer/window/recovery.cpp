// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/recovery.h"

#include <unistd.h>

#include <QString>
#include <system_error>

#include "designer/document/source_tree.h"
#include "platform/base/environment.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"

namespace designer {
namespace {

namespace fs = std::filesystem;

constexpr const char* Ending = ".unsaved";
// After the name of the original and after its digest: no name has this character.
constexpr char FieldEnd = '\0';

QString LockOf(const fs::path& copy) {
    return QString::fromStdString(copy.string() + ".lock");
}

// A lock of a process that is gone can be taken at once.
std::unique_ptr<QLockFile> MakeLock(const fs::path& copy) {
    auto lock = std::make_unique<QLockFile>(LockOf(copy));
    lock->setStaleLockTime(0);
    return lock;
}

fs::path NewName() {
    static int count = 0;
    return RecoveryFolder() / (std::to_string(getpid()) + "-" + std::to_string(++count) + Ending);
}

}  // namespace

fs::path RecoveryFolder() {
    const fs::path state = EnvironmentText("XDG_STATE_HOME"), home = EnvironmentText("HOME");
    const fs::path base = state.is_absolute()  ? state
                          : home.is_absolute() ? home / ".local" / "state"
                                               : TemporaryPlace();
    return base / "oxbow-courier" / "designer";
}

RecoveryFile::RecoveryFile() = default;

RecoveryFile::~RecoveryFile() {
    Remove();
}

void RecoveryFile::Write(const fs::path& original, const std::string& digest, std::string_view bytes) {
    try {
        if (m_file.empty()) {
            std::error_code ignored;
            fs::create_directories(RecoveryFolder(), ignored);
            fs::permissions(RecoveryFolder(), fs::perms::owner_all, ignored);
            m_file = NewName();
            m_lock = MakeLock(m_file);
            m_lock->tryLock(0);
        }
        AtomicFile copy(m_file, AtomicFile::IfThere::Replace, AtomicFile::Readers::Owner,
                        AtomicFile::Lasting::Brief);
        copy.Write(original.string() + FieldEnd + digest + FieldEnd);
        copy.Write(bytes);
        copy.Commit();
    } catch (const RuntimeError&) {
        // The disk is full, or there is no home: the report itself can still be saved elsewhere.
    }
}

void RecoveryFile::Remove() {
    if (m_file.empty()) {
        return;
    }
    std::error_code ignored;
    fs::remove(m_file, ignored);
    m_lock.reset();
    m_file.clear();
}

std::vector<LostReport> FindLostReports() {
    std::vector<LostReport> lost;
    std::error_code failure;
    for (const fs::directory_entry& entry : fs::directory_iterator(RecoveryFolder(), failure)) {
        const fs::path copy = entry.path();
        if (copy.extension() != Ending || !MakeLock(copy)->tryLock(0)) {
            continue;
        }
        const auto whole = ReadSmallFile(copy, SourceLimits().bytes + 4096);
        const std::size_t name = whole ? whole->find(FieldEnd) : std::string::npos;
        const std::size_t digest = name == std::string::npos ? name : whole->find(FieldEnd, name + 1);
        if (digest != std::string::npos) {
            lost.push_back({copy, whole->substr(0, name), whole->substr(name + 1, digest - name - 1),
                            whole->substr(digest + 1)});
        }
    }
    return lost;
}

void ForgetLostReport(const LostReport& lost) {
    std::error_code ignored;
    fs::remove(lost.copy, ignored);
}

}  // namespace designer
