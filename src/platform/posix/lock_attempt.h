// SPDX-License-Identifier: GPL-3.0-or-later
// Locks on open files and folders, which end with their process, however that ends.
#pragma once

#include <string>

enum class LockAttempt {
    Taken,
    Refused,  // another open file has it
    Unknown,  // the file system has no locks, or the handle is none
};

// Takes the lock for this open file alone, without waiting.
LockAttempt TryLock(int handle);

// Whether the name in the open folder, or AT_FDCWD and a path, is the open file itself: no link to it, and no
// other file that has come in its place. Whoever releases a lock may have removed its file.
bool StandsFor(int folder, const std::string& name, int handle);
