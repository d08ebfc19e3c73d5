// SPDX-License-Identifier: GPL-3.0-or-later
// Names of unfinished files and folders. The maker holds a lock until the file has its final name or is
// deleted. So any process of this machine, inside or outside a container, and other machines whose file
// system supports locks, can distinguish what a killed process left from work in progress.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

struct HeldName {
    std::string name;  // in its folder
    int handle = -1;   // open and locked; the caller closes it
    int code = 0;      // the machine's error code if handle is -1
};

// Makes a file, open for reading and writing, in the open folder. Its name is the prefix and 16 random
// characters. If the file system has no locks, the file is not locked.
HeldName MakeHeldFile(int folder, std::string_view prefix, mode_t mode);

// Makes a folder in the same way, for its owner only.
HeldName MakeHeldFolder(int folder, std::string_view prefix);

// Removes the files, and the user's own folders, that have this prefix and that no process holds a lock on.
// A file or folder that this function cannot lock stays. A process examines a folder at most once an hour.
// Never fails.
void RemoveLeftovers(const std::filesystem::path& folder, std::string_view prefix);

// Waits for the lock on an open file or folder. Returns false if another process keeps it for `longest`, or
// if the file system has no locks.
bool WaitForLock(int handle, std::chrono::milliseconds longest);
