// Names of what is not finished yet. The maker holds a lock on such a file or folder until it has its final
// name or is gone, so that what a killed process left can be told from work under way: by any process of this
// machine, in a container or not, and of other machines where the file system knows locks.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

struct HeldName {
    std::string name;  // in its folder
    int handle = -1;   // open and locked; the caller closes it
    int code = 0;      // when handle is -1: the machine's error code
};

// Makes a file, open for reading and writing, in the open folder. Its name is the prefix and 16 characters of
// chance. Where the file system has no locks the file is not locked.
HeldName MakeHeldFile(int folder, std::string_view prefix, mode_t mode);

// Likewise a folder, for its owner only.
HeldName MakeHeldFolder(int folder, std::string_view prefix);

// Removes the files and the user's own folders with this prefix that nobody holds a lock on. What cannot be
// locked stays. A process looks into a folder once an hour at most. Never fails.
void RemoveLeftovers(const std::filesystem::path& folder, std::string_view prefix);

// Waits for the lock on an open file or folder. False when another process keeps it all that time, or when
// the file system has no locks.
bool WaitForLock(int handle, std::chrono::milliseconds longest);
