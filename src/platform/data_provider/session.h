// SPDX-License-Identifier: GPL-3.0-or-later
// What a provider of data access implements. platform/data chooses the provider by what the data file is.
//
// Statements are in the system's dialect (platform/contracts/adodb.h). Every function raises the numbered
// errors described there.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/contracts/adodb.h"

// The rows of one select, read forward. An object may be used as long as its session lives.
class DataRows {
 public:
    virtual ~DataRows() = default;
    // Moves to the first row, then to the next one. Returns false after the last row.
    virtual bool Next() = 0;
    virtual std::size_t ColumnCount() const = 0;
    virtual std::string ColumnName(std::size_t column) const = 0;
    // Sets `value` to a field of the current row.
    virtual void Read(std::size_t column, Variant& value) const = 0;
};

// One connection to the data.
class DataSession {
 public:
    DataSession() = default;
    virtual ~DataSession() = default;
    DataSession(const DataSession&) = delete;
    DataSession& operator=(const DataSession&) = delete;

    // Runs one statement to its end.
    virtual void Execute(const std::string& statement) = 0;
    // Runs one statement and returns its rows, before the first one. Returns null for a statement without
    // columns, which has run.
    virtual std::unique_ptr<DataRows> Query(const std::string& statement) = 0;
    // Raises the error with which a write would fail now. Changes nothing.
    virtual void ProveWritable() = 0;
    // Returns why a shared store takes no changes from anybody, or an empty text.
    virtual std::string WhyReadOnly() { return {}; }
    virtual void Begin() = 0;
    virtual void Commit() = 0;  // an error leaves the transaction open
    virtual void Rollback() = 0;

    // Starts a transaction in which all statements see the rows of one moment.
    virtual void BeginReading() = 0;
    // Makes `last` the last key that the table has given, for a copy of a store. `column` holds the key.
    virtual void SetLastKey(const std::string& table, const std::string& column, const std::string& last) = 0;

    // The report files of a shared store, by name. The digest is SHA-256 in hexadecimal digits; it is empty
    // for a file that the store does not have.
    virtual void KeepReport(const std::string& /*name*/, const std::string& /*bytes*/) {}
    virtual std::vector<std::string> ReportNames() { return {}; }
    virtual std::string DigestOfReport(const std::string& /*name*/) { return {}; }
    // Raises err::PathFileAccess for bytes that do not have the digest.
    virtual std::string BytesOfReport(const std::string& /*name*/) { return {}; }

    // Takes the row of a table for this session until ReleaseClaims or the session's end. Returns false if
    // another session holds it. Data that is not shared between machines has no claims: every row is free.
    virtual bool TakeClaim(const std::string& /*table*/, const std::string& /*key*/) { return true; }
    // Gives back what this session holds. Never raises an error: a session that is lost holds nothing.
    virtual void ReleaseClaims() noexcept {}
    // Returns why the claim that TakeClaim took no longer holds, or an empty text. Asks the server.
    virtual std::string LossOfClaim(const std::string& /*table*/, const std::string& /*key*/) { return {}; }
    // Returns what all sessions hold.
    virtual std::vector<ADODB::HeldClaim> HeldClaims() { return {}; }
};
