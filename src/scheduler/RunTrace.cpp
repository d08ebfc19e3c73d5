// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/RunTrace.h"

#include <fcntl.h>
#include <unistd.h>

#include <string_view>
#include <utility>

#include "platform/base/one_line.h"
#include "platform/base/text.h"
#include "platform/posix/lock_attempt.h"
#include "platform/posix/small_file.h"
#include "scheduler/RunNotes.h"

namespace Global {

namespace {

constexpr std::size_t LongestTitle = 1000;  // bytes

std::filesystem::path RunningFile() {
    return RunNotesFile("PressroomLive.underway");
}

}  // namespace

// Not forced to the disk: it is for the end of a process, not of the machine.
void RunTrace::Begin(RunKind kind, const std::string& reportID, const std::string& title) {
    try {
        End();
        m_path = RunningFile();
        UniqueFd file(open(m_path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
        if (file.Get() < 0 || TryLock(file.Get()) != LockAttempt::Taken) {
            return;
        }
        const std::string line =
            WordOf(kind) + " " + reportID + " " + OnOneLine(CutText(title, LongestTitle)) + "\n";
        if (ftruncate(file.Get(), 0) == 0 &&
            write(file.Get(), line.data(), line.size()) == static_cast<ssize_t>(line.size())) {
            m_file = std::move(file);
        } else {
            unlink(m_path.c_str());
        }
    } catch (...) {
        return;
    }
}

void RunTrace::End() {
    if (m_file.Get() >= 0) {
        unlink(m_path.c_str());
        m_file.Close();
    }
}

std::optional<CutOffRun> TakeRunTrace() {
    const std::filesystem::path path = RunningFile();
    const UniqueFd file = OpenRegularFile(path);
    if (file.Get() < 0 || TryLock(file.Get()) != LockAttempt::Taken) {
        return std::nullopt;
    }
    const std::optional<std::string> text = ReadToEnd(file.Get(), 2 * LongestTitle);
    unlink(path.c_str());
    if (!text || !text->ends_with('\n')) {
        return std::nullopt;
    }
    const std::string_view line(text->data(), text->size() - 1);
    const std::size_t first = line.find(' ');
    const std::size_t second = first == std::string_view::npos ? first : line.find(' ', first + 1);
    if (second == std::string_view::npos) {
        return std::nullopt;
    }
    for (const RunKind kind : {RunKind::Schedule, RunKind::Package}) {
        if (line.substr(0, first) == WordOf(kind)) {
            return CutOffRun{kind, std::string(line.substr(first + 1, second - first - 1)),
                             std::string(line.substr(second + 1))};
        }
    }
    return std::nullopt;
}

}  // namespace Global
