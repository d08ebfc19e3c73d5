// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine needs from the machine and the application around it. Every function has a default
// implementation: a program that only runs reports needs no host of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace rdl {

class Host {
 public:
    virtual ~Host() = default;

    // The current local time in ticks of 100 ns since 0001-01-01 00:00.
    virtual std::int64_t NowTicks() const;
    // Returns the user name for User!UserID, as UTF-8.
    virtual std::string UserName() const;
    // Returns the absolute path of `name`; a relative name starts at `folder`. The file need not exist;
    // by default a piece that does not exist as spelled is the one that differs from it in case only.
    // Raises an error if no file can have this name.
    virtual std::filesystem::path PathOf(std::string_view name, const std::string& folder) const;
    // Returns absolute paths of folders to search for data after the report's own folder. Empty by default.
    virtual std::vector<std::string> DataFolders() const;
    // Returns the absolute paths of files and folders (with all their contents) that no report may read, as
    // they hold passwords and private data. A SQLite file includes its log and journal. Empty by default.
    virtual std::vector<std::filesystem::path> OwnFiles() const;
    // Opens an unnamed temporary file for reading and writing. Returns its descriptor, which the caller
    // closes; the file is deleted with it. Raises an error if the file cannot be created.
    virtual int OpenTemporaryFile() const;
};

// Returns the host set last by SetHost, or the default host.
const Host& TheHost();
// Null restores the default host. The caller owns `host` and keeps it alive while reports run.
void SetHost(const Host* host);

}  // namespace rdl
