// Who may read and write a file, handed from one file to the one that takes its place.
#pragma once

#include <filesystem>

// Gives the open file what `former`, if it is a regular file, has: owner and group as far as that is
// permitted, access list or mode. A group that cannot be kept gets no more than others have. `isPrivate`: a
// former file that others could read gives its owner and group only; the new one is for its owner alone.
// Never fails: what the file system does not know is left as it is.
void TakeAccessOver(int file, const std::filesystem::path& former, bool isPrivate);
