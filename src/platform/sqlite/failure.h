// SPDX-License-Identifier: GPL-3.0-or-later
// Converts SQLite's failures to the numbered errors of the data layer.
#pragma once

#include <filesystem>
#include <string>

struct sqlite3;

// Raises the error for a result code of SQLite on `handle`, which may be null. `file` is the data file as a
// path of the system; `waited` is the number of seconds for which a busy file was waited for.
[[noreturn]] void RaiseDataError(sqlite3* handle, int code, const std::string& file, double waited = 0);

// Raises the error of a write-protected file whose log a reader cannot use: the program that wrote the log
// has ended in the middle of its work, or the log is not for this user.
[[noreturn]] void RaiseUnfinished(const std::string& file, const std::filesystem::path& log);

// Returns true if the call may succeed later, because another process holds the file for a moment.
bool IsBusyCode(int code);
