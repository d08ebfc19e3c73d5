// SPDX-License-Identifier: GPL-3.0-or-later
// A connection to the data file and a statement on it.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/contracts/runtime.h"
#include "platform/sqlite/read_only_file.h"

struct sqlite3;
struct sqlite3_stmt;

// An open data file. The file must exist. It is put into WAL mode, and every write is on the disk before its
// call returns.
class Database {
 public:
    // To read, a write-protected file is opened too, and nothing is made or changed beside it.
    enum class Use { ToWrite, ToRead };

    explicit Database(std::string file, Use use = Use::ToWrite);  // a path of the system
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* Handle() const { return m_handle.get(); }
    // Raises the error of the last call on the handle.
    [[noreturn]] void Raise(int code);

    void Begin();   // starts a transaction that may write: from here on the file cannot be busy
    void Commit();  // an error leaves the transaction open
    void Rollback();
    // Raises the error with which a write would fail, and changes nothing: writes pages to the log and rolls
    // them back.
    void ProveWritable();
    // Raises an error if the file was written while it was read without locks: what was read may be of two
    // moments.
    void CheckUnchanged() const;

 private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };

    std::filesystem::path FindFile() const;
    void OpenFile(const std::string& name, int flags);
    void OpenWriteProtected();
    void Configure();
    void UseWriteAheadLog();
    void Run(const char* statement);
    static int WaitWhileBusy(void* database, int calls);

    std::string m_file;            // a path of the system
    std::filesystem::path m_path;  // of the machine
    std::chrono::steady_clock::time_point m_busySince;
    std::optional<RuntimeError> m_functionError;
    std::unique_ptr<sqlite3, Closer> m_handle;
    std::optional<FileStamp> m_asItLay;  // of a file that is read without locks
};

// One statement in the system's dialect, ready to step. Raises a syntax error for an empty statement and for
// text after the statement.
class Statement {
 public:
    Statement(Database& database, const std::string& text);

    sqlite3_stmt* Handle() const { return m_statement.get(); }
    bool HasColumns() const;
    // Moves to the next row. Returns false after the last one. Waits for a busy file only before the first
    // row, when the statement has not had any effect yet.
    bool Step();

 private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };

    // For the result of a step: raises its error; returns false after the last row.
    bool HasRow(int code) const;

    Database& m_database;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
    bool m_started = false;
};
