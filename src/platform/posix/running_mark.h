// SPDX-License-Identifier: GPL-3.0-or-later
// Tells whether a scheduler runs in an application folder: each one keeps a shared lock on the file
// PressroomLive.running there. The file stays; a lock ends with its process.
#pragma once

#include <filesystem>

#include "platform/posix/unique_fd.h"

// Marks the folder until the process ends. Waits while another process keeps schedulers out. Never fails: a
// folder that cannot be written, or a file system without locks, is not marked.
void MarkRunning(const std::filesystem::path& folder);

// While an object lives, no scheduler begins in the folder.
class SchedulersKeptOut {
 public:
    explicit SchedulersKeptOut(const std::filesystem::path& folder);
    // Returns true if a scheduler runs. It is not kept out.
    bool IsRunning() const { return m_isRunning; }

 private:
    UniqueFd m_file;
    bool m_isRunning = false;
};
