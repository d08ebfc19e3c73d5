// SPDX-License-Identifier: GPL-3.0-or-later
// A live database for one test, in a folder that is removed with it. The folder is the application's folder
// meanwhile. With OXC_TEST_SERVER in the environment its file is a link to a team's store (team_store.h).
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace fakes {

class TeamStore;

class TestDatabase {
 public:
    TestDatabase();
    ~TestDatabase();
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;

    const std::filesystem::path& Folder() const { return m_folder; }
    // Runs statements with the bare library of the database, as another program would.
    void Run(const std::string& statements) const;
    // Returns rows as texts joined by "
    // ", Null as "null".
    std::vector<std::string> Rows(const std::string& select) const;
    // Keeps the database busy for writers while the object lives.
    std::shared_ptr<void> Hold() const;
    // Returns the description of the error of a statement that has waited 0.01 seconds for a busy database.
    std::string BusyText() const;
    // Returns every statement that the system has run since the last call, in order.
    std::vector<std::string> TakeStatements();

 private:
    std::filesystem::path m_folder;
    std::unique_ptr<TeamStore> m_team;  // null: the embedded database
    std::vector<std::string> m_statements;
};

// The row of a due schedule; a field that a test does not set has a usual value.
struct ScheduleRow {
    std::string title = "Sales";
    std::string path = "Z:\\reports\\sales.rpt";
    std::string sendTo = "ann@example.com;";
    std::string subject = "Subject";
    std::string message = "Body";
    std::string startDate = "2000-01-01";
    std::string endDate = "3000-12-31";
    std::string runAt = "00:00";
    std::string frequency = "Daily";
    std::string nextRun = "2002-03-07";
    std::string formula = {};
    std::string format = "Acrobat Format (PDF)";
    std::string userName = {};
    std::string password = {};
    std::string loginReq = "F";
};
void Insert(const TestDatabase& database, const ScheduleRow& row);

}  // namespace fakes
