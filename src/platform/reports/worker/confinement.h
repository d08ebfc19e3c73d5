// SPDX-License-Identifier: GPL-3.0-or-later
// What a report process may not do, whatever a report makes of it. Called once, before the first report and
// before the process has a second thread; nothing of it can be taken back.
//
// It ends with its parent, has no core dump, no new privileges, and limits on address space, open files and
// the size of a file. The kernel's OOM killer prefers it to other programs. Where the kernel has Landlock, it
// writes below TemporaryPlace only: a document goes to a file that the parent has opened. Where the kernel
// has seccomp filters, it starts no program and no process, changes no file's rights, and the calls that no
// report needs are refused.
// The PostgreSQL passwords and certificates of its user, which may open the team's store, are not used.
// It still reaches the network, because data sources are there.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace reports::worker {

struct Confinement {
    std::int64_t megabytes = 0;  // of address space
    // Folders of reports and their data. If there are some, other files of users cannot be read. Empty: a
    // report may read what its user may read, except OwnFiles of the host.
    std::vector<std::filesystem::path> readable;
};

// Returns what the kernel lacks for it, in words for the journal; an empty text if it lacks nothing. Raises
// RuntimeError WorkerFailed if a limit cannot be set, or if `readable` is given and the kernel has no
// Landlock.
std::string Confine(const Confinement& confinement);

}  // namespace reports::worker
