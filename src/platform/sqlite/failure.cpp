// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/failure.h"

#include <sqlite3.h>

#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>

#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"

namespace {

// Raises the error of a faulty statement. SQLite has one code for all of them; only the text distinguishes
// them.
[[noreturn]] void RaiseStatementError(const std::string& message) {
    if (message.starts_with("no such table")) {
        throw RuntimeError(err::DataTableMissing, "The data has no table of that name; " + message);
    }
    if (message.starts_with("no such column") || Contains(message, "has no column named")) {
        throw RuntimeError(err::DataColumnMissing,
                           "The data has no column of that name, or a value is missing; " + message);
    }
    throw RuntimeError(err::DataSyntax, "The statement is not understood; " + message);
}

// If a log cannot be made there, SQLite reports "unable to open".
bool IsOnReadOnlyFileSystem(const std::string& file) {
    try {
        struct statvfs system {};
        return statvfs(paths::ToMachine(file).c_str(), &system) == 0 && (system.f_flag & ST_RDONLY) != 0;
    } catch (const RuntimeError&) {
        return false;
    }
}

// Raises an error of the machine that does not depend on the file, if the system's code is one of these.
void RaiseLack(int systemCode, const std::string& quoted) {
    if (systemCode == EROFS) {
        throw RuntimeError(err::DataReadOnly,
                           "The data file " + quoted + " is write-protected; its file system is read-only");
    }
    switch (const std::int32_t number = NumberOfSystemError(systemCode, 0)) {
        case 0:
            return;
        case err::DiskFull:
            throw RuntimeError(number, "The disk is full: the data file " + quoted + " cannot be written");
        case err::TooManyFiles:
            throw RuntimeError(number, "Too many open files: the data file " + quoted + " cannot be opened");
        default:
            throw RuntimeError(number);
    }
}

[[noreturn]] void RaiseInputOutputError(int extended, int systemCode, const std::string& message,
                                        const std::string& quoted) {
    if (extended == SQLITE_IOERR_NOMEM) {
        throw RuntimeError(err::OutOfMemory);
    }
    RaiseLack(systemCode, quoted);
    if (extended == SQLITE_IOERR_SHORT_READ) {
        throw RuntimeError(err::DataUnavailable, "The data file " + quoted + " is damaged; " + message);
    }
    throw RuntimeError(err::DeviceIo, "The data file " + quoted + " cannot be read or written; " + message);
}

}  // namespace

void RaiseDataError(sqlite3* handle, int code, const std::string& file, double waited) {
    const std::string message = handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(code);
    const int extended = handle != nullptr ? sqlite3_extended_errcode(handle) : code;
    const int systemCode = handle != nullptr ? sqlite3_system_errno(handle) : 0;
    const std::string quoted = "\"" + paths::ForUser(file) + "\"";
    switch (code & 0xFF) {
        case SQLITE_ERROR:
            RaiseStatementError(message);
        case SQLITE_CONSTRAINT:
            throw RuntimeError(err::DataConstraint, "The row breaks a rule of its table; " + message);
        case SQLITE_NOTADB:
            throw RuntimeError(err::DataUnavailable, "The file " + quoted + " is not a database");
        case SQLITE_CORRUPT:
            throw RuntimeError(err::DataUnavailable, "The data file " + quoted + " is damaged; " + message);
        case SQLITE_CANTOPEN:
            RaiseLack(IsOnReadOnlyFileSystem(file) ? EROFS : systemCode, quoted);
            [[fallthrough]];
        case SQLITE_PERM:
        case SQLITE_AUTH:
            throw RuntimeError(err::DataUnavailable,
                               "The data file " + quoted + " cannot be opened; " + message);
        case SQLITE_READONLY:
            throw RuntimeError(err::DataReadOnly,
                               "The data file " + quoted + " is write-protected; " + message);
        case SQLITE_FULL:
            throw RuntimeError(err::DiskFull,
                               "The disk is full: the data file " + quoted + " cannot be written");
        case SQLITE_IOERR:
            RaiseInputOutputError(extended, systemCode, message, quoted);
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            throw RuntimeError(err::DataTimeout, "The data file " + quoted +
                                                     " is still in use by another program after " +
                                                     Variant(waited).Text() + " seconds");
        case SQLITE_NOMEM:
            throw RuntimeError(err::OutOfMemory);
        case SQLITE_TOOBIG:
            throw RuntimeError(err::Overflow, "The text or the statement is too long; " + message);
        case SQLITE_MISMATCH:
            throw RuntimeError(err::DataTypeMismatch, "The value does not suit its column; " + message);
        default:
            throw RuntimeError(err::DataSyntax, "The data layer fails; " + message);
    }
}

void RaiseUnfinished(const std::string& file, const std::filesystem::path& log) {
    const std::string quotedLog = "\"" + paths::ForUser(paths::FromMachine(log)) + "\"";
    const bool isReadable = faccessat(AT_FDCWD, log.c_str(), R_OK, AT_EACCESS) == 0;
    throw RuntimeError(err::DataReadOnly,
                       "The data file \"" + paths::ForUser(file) +
                           "\" is write-protected and cannot be read now; " +
                           (isReadable ? "a program ended before it had written all of " + quotedLog +
                                             " to it: a user who may write there must open it first"
                                       : "its log " + quotedLog + " cannot be read by this user"));
}

bool IsBusyCode(int code) {
    const int primary = code & 0xFF;
    return primary == SQLITE_BUSY || primary == SQLITE_LOCKED || primary == SQLITE_PROTOCOL;
}
