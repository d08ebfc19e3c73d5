// SPDX-License-Identifier: GPL-3.0-or-later
// Data access to an embedded database.
#pragma once

#include "platform/data_provider/session.h"
#include "platform/sqlite/database.h"

class SqliteSession : public DataSession {
 public:
    // `file` is a path of the system.
    explicit SqliteSession(const std::string& file, Database::Use use = Database::Use::ToWrite)
        : m_database(file, use) {}

    void Execute(const std::string& statement) override;
    std::unique_ptr<DataRows> Query(const std::string& statement) override;
    void ProveWritable() override { m_database.ProveWritable(); }
    void Begin() override { m_database.Begin(); }
    void Commit() override { m_database.Commit(); }
    void Rollback() override { m_database.Rollback(); }
    void BeginReading() override;
    void SetLastKey(const std::string& table, const std::string& column, const std::string& last) override;

 private:
    Database m_database;
};
