// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/database.h"

#include <sqlite3.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/regional.h"
#include "shared/Global.h"
#include "support/source_dir.h"
#include "support/team_store.h"

namespace fakes {

namespace {

class Handle {
 public:
    explicit Handle(const std::filesystem::path& file) {
        if (sqlite3_open(file.c_str(), &m_db) != SQLITE_OK) {
            throw std::runtime_error("cannot open " + file.string());
        }
        sqlite3_busy_timeout(m_db, 10'000);
        // No test needs the database afterwards: fifty syncs for each database would waste time.
        sqlite3_exec(m_db, "pragma synchronous=off", nullptr, nullptr, nullptr);
    }
    ~Handle() { sqlite3_close(m_db); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    sqlite3* Get() const { return m_db; }

 private:
    sqlite3* m_db = nullptr;
};

std::filesystem::path NewFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "oxc-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    return name;
}

std::string Schema() {
    std::ifstream file(SourceDir() + "/src/store/schema.sql");
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace

TestDatabase::TestDatabase() : m_folder(NewFolder()) {
    SetRegional({});  // rows and statements have dates with the year first, whatever region the tests run in
    std::filesystem::create_directories(m_folder / "output");
    std::filesystem::create_directories(m_folder / "Cache");
    SetAppPath(paths::FromMachine(m_folder));
    if (TestsUseServer()) {
        m_team = std::make_unique<TeamStore>();
        std::ofstream(m_folder / "PressroomLive.dat") << m_team->LinkText();
    } else {
        Run(Schema());
    }
    Global::ConnectionString = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + AppPath() +
                               "\\PressroomLive.dat;Persist Security Info=False";
    ADODB::SetStatementTrace([this](const std::string& statement) { m_statements.push_back(statement); });
}

TestDatabase::~TestDatabase() {
    ADODB::SetStatementTrace({});
    SetAppPath({});
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

void TestDatabase::Run(const std::string& statements) const {
    if (m_team != nullptr) {
        m_team->Run(statements);
        return;
    }
    const Handle handle(m_folder / "PressroomLive.dat");
    char* message = nullptr;
    if (sqlite3_exec(handle.Get(), statements.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        const std::string text = message;
        sqlite3_free(message);
        throw std::runtime_error(text);
    }
}

std::vector<std::string> TestDatabase::Rows(const std::string& select) const {
    if (m_team != nullptr) {
        return m_team->Rows(select);
    }
    const Handle handle(m_folder / "PressroomLive.dat");
    std::vector<std::string> rows;
    const auto add = [](void* out, int columns, char** values, char** /*names*/) {
        std::string row;
        for (int i = 0; i < columns; ++i) {
            row += (i > 0 ? "|" : "") + std::string(values[i] != nullptr ? values[i] : "null");
        }
        static_cast<std::vector<std::string>*>(out)->push_back(row);
        return 0;
    };
    char* message = nullptr;
    if (sqlite3_exec(handle.Get(), select.c_str(), add, &rows, &message) != SQLITE_OK) {
        const std::string text = message;
        sqlite3_free(message);
        throw std::runtime_error(text);
    }
    return rows;
}

std::shared_ptr<void> TestDatabase::Hold() const {
    if (m_team != nullptr) {
        return m_team->Hold();
    }
    auto holder = std::make_shared<Handle>(m_folder / "PressroomLive.dat");
    if (sqlite3_exec(holder->Get(), "begin immediate", nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error("the database is held already");
    }
    return holder;
}

std::string TestDatabase::BusyText() const {
    return m_team != nullptr
               ? "The store is still in use by another program; canceling statement due to lock timeout"
               : "The data file \"" + paths::ForUser(AppPath()) +
                     "/PressroomLive.dat\" is still in use by another program after 0.01 seconds";
}

std::vector<std::string> TestDatabase::TakeStatements() {
    std::vector<std::string> taken;
    taken.swap(m_statements);
    return taken;
}

void Insert(const TestDatabase& database, const ScheduleRow& row) {
    const auto quoted = [](const std::string& text) {
        std::string result = "'";
        for (const char c : text) {
            result += c == '\'' ? "''" : std::string(1, c);
        }
        return result + "'";
    };
    const std::string columns[] = {row.title,     row.path,    row.sendTo,   row.subject,   row.message,
                                   row.startDate, row.endDate, row.runAt,    row.frequency, row.nextRun,
                                   row.formula,   row.format,  row.userName, row.password,  row.loginReq};
    std::string values;
    for (const std::string& column : columns) {
        values += (values.empty() ? "" : ",") + quoted(column);
    }
    database.Run(
        "insert into "
        "ReportScheduler(ReportTitle,ReportPath,SendTo,Subject,Message,StartDate,EndDate,RunAt,Frequency,"
        "NextRun,SelectionForm,Format,UserName,Password,LoginReq) values(" +
        values + ")");
}

}  // namespace fakes
