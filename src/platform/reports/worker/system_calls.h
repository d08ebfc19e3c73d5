// SPDX-License-Identifier: GPL-3.0-or-later
// A seccomp filter that refuses the calls of the kernel that no report needs (seccomp(2)).
#pragma once

namespace reports::worker {

// From now on the calling thread, and each thread that it starts, starts no program and no process, examines
// and signals no other one, and changes neither the machine nor its own name spaces: such a call fails with
// EPERM. Threads, files and the network work. Returns false if the kernel has no filters.
bool RefuseSystemCalls();

}  // namespace reports::worker
