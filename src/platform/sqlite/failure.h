// SQLite's failures as the numbered errors of the data layer.
#pragma once

#include <string>
#include <string_view>

struct sqlite3;

// Raises the error for a result code of SQLite on `handle` (which may be nullptr). `file` is the data file as
// the system writes paths, `waited` how many seconds a busy file is waited for.
[[noreturn]] void RaiseDataError(sqlite3* handle, int code, const std::string& file, double waited = 0);

// Raises "not a statement" for a statement that SQLite never gets to see.
[[noreturn]] void RaiseSyntaxError(std::string_view reason);

// Whether the call may succeed when it is made again: another process holds the file for a moment.
bool IsBusyCode(int code);
