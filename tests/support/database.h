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
