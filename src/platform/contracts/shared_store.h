// SPDX-License-Identifier: GPL-3.0-or-later
// A store that several machines share. Over an embedded database these functions do nothing, but
// ReportOnThisMachine.
//
// Each machine has the report files in its own folder Cache; the store keeps their bytes, so that a schedule
// made on one machine runs on another. Paths are those of the system.
//
// Errors are those of data access, and 75 for a file that cannot be read or written, 6 for one of more than
// 64 megabytes.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/contracts/runtime.h"

class DataRows;

// Returns true if the data file is a link to a shared store, even one that cannot be used.
bool IsSharedStore(const std::string& connectionString);

// The error of a store that cannot be reached, if the user was asked and does not want to wait for it.
class StoreGivenUp : public RuntimeError {
 public:
    explicit StoreGivenUp(const RuntimeError& error) : RuntimeError(error) {}
};

// Sets what is asked, with the error, when data access does not reach a shared store: true to try again.
// After the answer false the error is raised as StoreGivenUp, and what data access begins within the next two
// seconds is not asked about, as it mostly belongs to the same command. Null, the default, raises the error
// at once.
void AskWhenStoreIsAway(std::function<bool(const RuntimeError& error)> question);

// Returns the error with which the store cannot be used now: it cannot be reached, or takes no changes from
// anybody (err::DataReadOnly). Asks nothing.
std::optional<RuntimeError> SharedStoreFailure(const std::string& connectionString);

// One read of a small table in place of many. While an object lives, recordsets on a shared store get the
// rows of "select COLUMNS from TABLE where COLUMN = NUMBER" from memory; the table is read when the first of
// these statements is opened, with its columns. The words, the rows and their order are the same as without
// it. Any other statement, and an embedded database, is not concerned. Objects are destroyed in the reverse
// order of their making.
class TableSnapshot {
 public:
    TableSnapshot(std::string connectionString, std::string table, std::string column);
    ~TableSnapshot();
    TableSnapshot(const TableSnapshot&) = delete;
    TableSnapshot& operator=(const TableSnapshot&) = delete;

    // Returns null for a statement that it does not answer.
    std::unique_ptr<DataRows> Answer(const std::string& statement, const std::string& connectionString);

    struct Rows;

 private:
    void Read(const std::string& columns);

    std::string m_connectionString, m_table, m_column;
    std::shared_ptr<const Rows> m_rows;  // null until the table has been read
    TableSnapshot* m_former;
};

// Gives the store the bytes of a file in the folder Cache, under the file's name.
void KeepReport(const std::string& connectionString, const std::string& path);

// Returns the path under which a report is opened on this machine. For a file in a folder Cache, of this or
// another machine, that is the file of its name in this application's Cache; it is copied from the store
// first, for its owner only, if it is missing or different. Over an embedded database it is that file if the
// path leads to none. Any other path, and a name that the store does not have, is returned unchanged. Raises
// 75 if the store's bytes are damaged; the file here then stays as it is.
std::string ReportOnThisMachine(const std::string& connectionString, const std::string& path);
