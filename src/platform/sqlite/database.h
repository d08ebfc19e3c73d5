// One connection to the data file and one statement on it, as the recordset and the connection both need
// them.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "platform/contracts/runtime.h"

struct sqlite3;
struct sqlite3_stmt;

// An open data file. It must exist; it is put into WAL mode and every write is on the disk before its call
// returns.
class Database {
 public:
    explicit Database(const std::string& connectionString);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* Handle() const { return m_handle.get(); }
    // Raises what the last call on the handle failed with.
    [[noreturn]] void Raise(int code);

    void Begin();   // a transaction that may write: from here on it cannot meet a busy file
    void Commit();  // raises with the transaction still open
    void Rollback();
    // Raises what a write fails with, and changes nothing: writes pages to the log and takes them back.
    void ProveWritable();

 private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };

    void OpenFile();
    void Configure();
    void UseWriteAheadLog();
    void Run(const char* statement);
    static int WaitWhileBusy(void* database, int calls);

    std::string m_file;  // as the system writes paths
    std::chrono::steady_clock::time_point m_busySince;
    std::optional<RuntimeError> m_functionError;
    std::unique_ptr<sqlite3, Closer> m_handle;
};

// One statement in the system's dialect, ready to step. Anything behind it is an error, and so is an empty
// one.
class Statement {
 public:
    Statement(Database& database, const std::string& text);

    sqlite3_stmt* Handle() const { return m_statement.get(); }
    bool HasColumns() const;
    // Moves to the next row; false behind the last one. A busy file is waited for before the first row only,
    // as nothing has happened until then.
    bool Step();

 private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };

    Database& m_database;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
    bool m_started = false;
};

// Tells the statement trace, if there is one.
void TraceStatement(const std::string& statement);
