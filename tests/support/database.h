// A live database of its own for a test, in a folder that goes with it. It is the application's folder
// meanwhile.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace fakes {

class TestDatabase {
 public:
    TestDatabase();
    ~TestDatabase();
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;

    const std::filesystem::path& Folder() const { return m_folder; }
    // Runs statements by the bare SQLite library, as another program would.
    void Run(const std::string& statements) const;
    // Rows as texts joined by "|", Null as "null".
    std::vector<std::string> Rows(const std::string& select) const;
    // Every statement the system has run since the last call, in order.
    std::vector<std::string> TakeStatements();

 private:
    std::filesystem::path m_folder;
    std::vector<std::string> m_statements;
};

// A due schedule's row; what a test does not name has a usual value.
struct ScheduleRow {
    std::string title = "Sales", path = "Z:\\reports\\sales.rpt", sendTo = "ann@example.com;",
                subject = "Subject", message = "Body", startDate = "2000-01-01", endDate = "3000-12-31",
                runAt = "00:00", frequency = "Daily", nextRun = "2002-03-07", formula,
                format = "Acrobat Format (PDF)", userName, password, loginReq = "F";
};
void Insert(const TestDatabase& database, const ScheduleRow& row);

}  // namespace fakes
