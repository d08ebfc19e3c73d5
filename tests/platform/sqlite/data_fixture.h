// SPDX-License-Identifier: GPL-3.0-or-later
// A data file for one test, with tables like the system's.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <vector>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

class DataFixture : public testing::Test {
 protected:
    DataFixture() {
        MakeFile("live.dat",
                 "create table Schedule(ReportID integer primary key autoincrement, ReportTitle text collate "
                 "nocase,"
                 " [Password] text collate nocase, Weight real, Folder integer unique);"
                 "create table History(ReportID integer, LastRun text collate nocase, Status text collate "
                 "nocase)");
    }

    // Made by SQLite itself, as the system's blank file is.
    void MakeFile(const std::string& name, const std::string& schema) const {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open((m_folder / name).c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, schema.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }

    std::string ConnectionTo(const std::string& name) const {
        return "Provider=Any.Provider.4.0;Data Source=" + paths::FromMachine(m_folder / name) +
               ";Persist Security Info=False";
    }

    void Execute(const std::string& statement) const {
        ADODB::Connection connection;
        connection.Open(m_data);
        connection.Execute(statement);
        connection.Close();
    }

    // The first column of every row.
    std::vector<std::string> Column(const std::string& statement) const {
        std::vector<std::string> values;
        ADODB::Recordset rows;
        for (rows.Open(statement, m_data); !rows.EOF_(); rows.MoveNext()) {
            values.push_back(rows.Fields(0).Value.Text());
        }
        return values;
    }

    std::string Single(const std::string& statement) const {
        const std::vector<std::string> values = Column(statement);
        EXPECT_EQ(values.size(), 1U) << statement;
        return values.empty() ? "" : values.front();
    }

    TemporaryFolder m_folder;
    std::string m_data = ConnectionTo("live.dat");
};
