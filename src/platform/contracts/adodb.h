// SPDX-License-Identifier: GPL-3.0-or-later
// Data access: connections, recordsets, fields by name, numbered errors.
//
// The data is one SQLite 3 file in WAL mode. "Data Source=" of the connection string names it as a path of
// the system. The file may instead be a link to a store on a PostgreSQL server, which several machines share;
// everything below holds for both. Statements are in the system's own dialect: SQLite's plus `top N`,
// `left(text,n)`, `datediff('d',a,b)`, `Now()` and names in square brackets. Texts and names of columns and
// tables compare without regard to case. One Execute or Open runs one statement: anything after it but
// blanks, comments and one semicolon is an error, so that a value cannot add a second statement. Double
// quotes mark identifiers, never texts.
//
// Errors are RuntimeErrors with the numbers err::Data*: file missing, unreadable or not a database; table
// missing; column or value missing; syntax; constraint. A missing file is never created. A server that cannot
// be reached is an unreadable file; a lost connection is opened again by the next operation. A busy database
// is waited for, up to 10 seconds; meanwhile windows repaint themselves and no other event runs.
//
// `order by LastRun` compares the moments that the texts hold, in any form of date. A text that holds no
// moment is older than all others.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

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
    // Raises the error with which a write would fail now: the data is write-protected, has no space left (a
    // quarter of a megabyte is needed) or stays busy. Changes nothing and does not wait for the disk. The
    // space stays reserved for the next write of this connection until it is closed.
    void ProveWritable();
    // The statements between BeginTrans and CommitTrans reach the disk together or not at all. Other programs
    // cannot write meanwhile. A connection that is closed before CommitTrans has changed nothing.
    void BeginTrans();
    void CommitTrans();  // an error leaves the transaction open, for RollbackTrans
    void RollbackTrans();
    void Close();  // 3704 if it is not open

 private:
    struct Impl;
    Impl& Opened() const;  // 3704 if it is not open
    std::unique_ptr<Impl> m_impl;
};

class Field {
 public:
    std::string Name;
    Variant Value;
};

// The rows of one select, read forward one at a time: memory does not grow with the number of rows. An open
// recordset sees the rows as they were when it was opened, while other connections write.
class Recordset {
 public:
    Recordset();
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    int CacheSize = 1;                 // a hint, without effect
    int CursorLocation = adUseServer;  // a hint, without effect

    // Opens a connection of its own from the connection string. A statement that returns no columns (an
    // update) is run and leaves the recordset closed.
    void Open(const std::string& statement, const std::string& activeConnection,
              CursorTypeEnum cursorType = adOpenForwardOnly, LockTypeEnum lockType = adLockReadOnly);
    bool EOF_() const;  // true after the last row; EOF is a macro of the C library
    void MoveNext();    // 3021 after the last row
    void Close();       // 3704 if it is not open
    bool IsOpen() const;

    // Returns a field by name, without regard to case, or by number from 0. Raises 3265 if there is no such
    // field, 3021 after the last row. The reference is valid until the next move.
    const Field& Fields(const std::string& name) const;
    const Field& Fields(std::size_t index) const;
    std::size_t FieldCount() const;

 private:
    struct Impl;
    Impl& Opened() const;  // 3704 if it is not open
    std::unique_ptr<Impl> m_impl;
};

// The error of a run whose claim is lost: another scheduler may run the item.
class ClaimLost : public RuntimeError {
 public:
    explicit ClaimLost(const std::string& why) : RuntimeError(err::DataUnavailable, why) {}
};

// One process's claim on an item that the schedulers of several machines find due. The claim ends with the
// object, or when the process or its connection dies. Over an embedded database every item is held at once.
class Claim {
 public:
    // `row` is the item's row of `table`, with its key in ReportID.
    Claim(const std::string& connectionString, const std::string& table, const Recordset& row);
    ~Claim();
    Claim(Claim&&) noexcept;
    Claim& operator=(Claim&&) noexcept;

    // Returns false if another process holds the item, or if the item has changed since `row` was read.
    bool IsHeld() const { return m_isHeld; }
    // Asks the server whether the session that took the claim still holds it. Raises ClaimLost if not.
    void Prove() const;

 private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;  // null if there is nothing to give back
    bool m_isHeld = true;
};

struct HeldClaim {
    std::string table, key;
    std::string holder;  // the machine and the process, as the server knows them
};
// Returns the claims of all processes on the store, and nothing for an embedded database.
std::vector<HeldClaim> HeldClaims(const std::string& connectionString);

// Returns a text that is the same for all connection strings to one store, and another for another store.
std::string StoreIdentity(const std::string& connectionString);

// Calls `trace` with every statement exactly as the system gave it, before it runs. For tests; an empty
// function turns it off.
void SetStatementTrace(std::function<void(const std::string&)> trace);

// Sets how long a busy database is waited for, in seconds. For tests; 0 or less restores 10.
void SetBusyWait(double seconds);

}  // namespace ADODB
