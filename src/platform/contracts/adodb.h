// Data access: connections, recordsets, fields by name, numbered errors.
//
// The data is one SQLite 3 file in WAL mode, named by the "Data Source=" of the connection string as a path
// of the system. Statements are in the system's own dialect, which is SQLite's plus `top N`, `left(text,n)`,
// `datediff('d',a,b)`, `Now()` and names in square brackets. Texts compare without regard to case, names of
// columns and tables likewise. One Execute or Open is one statement: anything but blanks, comments and one
// semicolon behind it is an error, so that no value can smuggle in a second one. Double-quoted literals are
// identifiers, never texts.
//
// Errors are RuntimeError with the numbers err::Data*: file missing, unreadable or no database; table
// missing; column or value missing; syntax; constraint. A missing file is never created. A busy database is
// waited for, 10 seconds; windows repaint themselves meanwhile, and nothing else runs.
//
// `order by LastRun` compares moments, in whatever form of date the text holds them; texts that are no
// moments count as older than all others.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "platform/contracts/runtime.h"

namespace ADODB {

enum CursorTypeEnum { adOpenForwardOnly = 0, adOpenKeyset = 1, adOpenDynamic = 2, adOpenStatic = 3 };
enum LockTypeEnum { adLockReadOnly = 1 };
enum CursorLocationEnum { adUseServer = 2, adUseClient = 3 };

class Connection {
 public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Open(const std::string& connectionString, const std::string& user = {},
              const std::string& password = {});
    // Runs one statement to its end.
    void Execute(const std::string& statement);
    // Raises what a write would fail with now: the data is write-protected, has no room left (a quarter of a
    // megabyte is asked for), or stays busy. Nothing is changed and nothing waits for the disk. The room is
    // kept for this connection's next write as long as it stays open.
    void ProveWritable();
    // What is executed between BeginTrans and CommitTrans reaches the disk together or not at all. Other
    // programs cannot write meanwhile. A connection that is closed first has changed nothing.
    void BeginTrans();
    void CommitTrans();  // an error leaves the transaction open, for RollbackTrans
    void RollbackTrans();
    void Close();  // 3704 when it is not open

 private:
    struct Impl;
    Impl& Opened() const;  // 3704 when it is not open
    std::unique_ptr<Impl> m_impl;
};

class Field {
 public:
    std::string Name;
    Variant Value;
};

// Rows of one select, read forward one at a time: memory does not grow with the number of rows. A recordset
// that stays open sees the rows as they stood when it was opened, while other connections write.
class Recordset {
 public:
    Recordset();
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    int CacheSize = 1;                 // a hint; kept for its callers
    int CursorLocation = adUseServer;  // likewise

    // Opens on a connection of its own made from the connection string. A statement that gives no rows of
    // columns (an update) is run and leaves the recordset closed.
    void Open(const std::string& statement, const std::string& activeConnection,
              CursorTypeEnum cursorType = adOpenForwardOnly, LockTypeEnum lockType = adLockReadOnly);
    bool EOF_() const;  // true behind the last row; EOF is a macro of the C library
    void MoveNext();    // 3021 behind the last row
    void Close();       // 3704 when it is not open
    bool IsOpen() const;

    // By name without regard to case, or by number from 0. 3265 when there is no such field, 3021 behind the
    // last row. The reference is good until the next move.
    const Field& Fields(const std::string& name) const;
    const Field& Fields(std::size_t index) const;
    std::size_t FieldCount() const;

 private:
    struct Impl;
    Impl& Opened() const;  // 3704 when it is not open
    std::unique_ptr<Impl> m_impl;
};

// Called with every statement exactly as the system gave it, before it runs. For tests; empty turns it off.
void SetStatementTrace(std::function<void(const std::string&)> trace);

// How long a busy database is waited for, in seconds. For tests; 0 or less returns to 10.
void SetBusyWait(double seconds);

}  // namespace ADODB
