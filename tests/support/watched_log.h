// SPDX-License-Identifier: GPL-3.0-or-later
// Watches the write-ahead logs of every data file while an object lives: how often they are synced. Can make
// the disk full at a length of the log.
#pragma once

#include <sqlite3.h>

class WatchedLog {
 public:
    WatchedLog() {
        s_watched = this;
        m_former = sqlite3_vfs_find(nullptr);
        m_vfs = *m_former;
        m_vfs.zName = "watched-log";
        m_vfs.xOpen = Open;
        sqlite3_vfs_register(&m_vfs, 1);
    }
    ~WatchedLog() {
        sqlite3_vfs_unregister(&m_vfs);
        sqlite3_vfs_register(m_former, 1);
        s_watched = nullptr;
    }
    WatchedLog(const WatchedLog&) = delete;
    WatchedLog& operator=(const WatchedLog&) = delete;

    int syncs = 0;
    sqlite3_int64 length = 0;    // the length that the log has reached
    sqlite3_int64 fullAt = -1;   // no byte after this one is written; -1: the disk is never full
    int fullCode = SQLITE_FULL;  // the code that the write returns then

 private:
    // SQLite's own functions for a log, except these two.
    static int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
        const int code = s_watched->m_former->xOpen(vfs, name, file, flags, outFlags);
        if (code == SQLITE_OK && (flags & SQLITE_OPEN_WAL) != 0) {
            s_real = file->pMethods;
            static sqlite3_io_methods methods;
            methods = *s_real;
            methods.xWrite = Write;
            methods.xSync = Sync;
            file->pMethods = &methods;
        }
        return code;
    }
    static int Write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
        if (s_watched->fullAt >= 0 && offset + count > s_watched->fullAt) {
            return s_watched->fullCode;
        }
        if (offset + count > s_watched->length) {
            s_watched->length = offset + count;
        }
        return s_real->xWrite(file, bytes, count, offset);
    }
    static int Sync(sqlite3_file* file, int flags) {
        ++s_watched->syncs;
        return s_real->xSync(file, flags);
    }

    static inline WatchedLog* s_watched = nullptr;
    static inline const sqlite3_io_methods* s_real = nullptr;
    sqlite3_vfs* m_former = nullptr;
    sqlite3_vfs m_vfs{};
};
