// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the Schedule History window over many schedules with many runs, from the command to the painted
// window: with the index of the blank database, and without it, as in databases made elsewhere. The floor is
// the same queries on one connection of the bare SQLite library. The exit code is 1 if a goal is missed.
#include <sqlite3.h>
#include <unistd.h>

#include <QApplication>
#include <QMdiArea>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "app/frmMain.h"
#include "bench/timing.h"
#include "desktop/HistoryCommands.h"
#include "desktop/frmViewer.h"
#include "platform/base/paths.h"
#include "shared/Global.h"

namespace {

namespace fs = std::filesystem;

constexpr int Schedules = 500;
constexpr int Runs = 10'000;
constexpr int Frequencies = 4;
constexpr int NodesOfASchedule = 12;  // itself, its next run and ten runs
constexpr int Repeats = 7;
constexpr double GoalSeconds = 1;

void Check(int code, sqlite3* handle) {
    if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW) {
        std::fprintf(stderr, "bench_history: %s\n", sqlite3_errmsg(handle));
        std::exit(2);
    }
}

class BareDatabase {
 public:
    explicit BareDatabase(const fs::path& path) { Check(sqlite3_open(path.c_str(), &m_handle), m_handle); }
    ~BareDatabase() { sqlite3_close(m_handle); }
    BareDatabase(const BareDatabase&) = delete;
    BareDatabase& operator=(const BareDatabase&) = delete;

    void Run(const std::string& statements) {
        Check(sqlite3_exec(m_handle, statements.c_str(), nullptr, nullptr, nullptr), m_handle);
    }
    // Returns the texts of column `column`. Reads every other column, too.
    std::vector<std::string> Read(const std::string& select, int column) {
        sqlite3_stmt* statement = nullptr;
        Check(sqlite3_prepare_v2(m_handle, select.c_str(), -1, &statement, nullptr), m_handle);
        std::vector<std::string> texts;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int index = 0; index < sqlite3_column_count(statement); ++index) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, index));
                if (index == column) {
                    texts.emplace_back(text != nullptr ? text : "");
                }
            }
        }
        Check(sqlite3_finalize(statement), m_handle);
        return texts;
    }

 private:
    sqlite3* m_handle = nullptr;
};

void MakeDatabase(const fs::path& path) {
    std::ifstream schema(OXC_SCHEMA);
    BareDatabase database(path);
    database.Run({std::istreambuf_iterator<char>(schema), {}});
    database.Run(
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
        std::to_string(Schedules) +
        ") insert into ReportScheduler(ReportTitle, ReportPath, RunAt, Frequency, NextRun) select 'Sales of "
        "region ' || i, 'Z:\\app\\Cache\\sales' || i || '.rpt', '08:30', case i % " +
        std::to_string(Frequencies) +
        " when 0 then 'Daily' when 1 then 'Weekly' when 2 then 'Monthly' else 'Weekdays' end, '2026-12-01' "
        "from n");
    database.Run(
        "with recursive n(i) as (select 0 union all select i + 1 from n where i < " +
        std::to_string(Runs - 1) + ") insert into ReportHistory select i % " + std::to_string(Schedules) +
        " + 1, datetime('2026-11-01', (i * 37 % 36000) || ' minutes'), case when i % 9 = 0 then "
        "'Failure' else 'Success' end, case when i % 9 = 0 then 'File not found: Z:\\srv\\sales.rpt' "
        "else 'None' end from n");
}

// Runs the window's queries on one connection.
int BareQueries(const fs::path& path) {
    BareDatabase database(path);
    int nodes = 0;
    for (const std::string& frequency : database.Read("select distinct frequency from reportscheduler", 0)) {
        ++nodes;
        for (const std::string& id : database.Read("select ReportTitle, ReportID, ReportPath, NextRun from "
                                                   "ReportScheduler where Frequency = '" +
                                                       frequency + "'",
                                                   1)) {
            const std::size_t runs =
                database
                    .Read(
                        "select runat, nextrun, lastrun, status, ErrMsg from ReportHistory r inner join "
                        "reportscheduler x on r.reportid = x.reportid where r.ReportID = " +
                            id + " order by lastrun desc limit 10",
                        0)
                    .size();
            nodes += 2 + static_cast<int>(runs);
        }
    }
    return nodes;
}

// Opens the window, paints it and closes it.
int Open() {
    mnuView_Click();
    QApplication::processEvents();
    return frmViewer::Instance().tvReports->Nodes().Count();
}

void Close() {
    frmMain::Instance().Children().closeAllSubWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool Measure(const char* name, const fs::path& path) {
    Global::ConnectionString = "Data Source=" + paths::FromMachine(path) + ";Persist Security Info=False";
    std::vector<double> bare, window;
    int nodes = 0, expected = 0;
    for (int repeat = 0; repeat < Repeats; ++repeat) {
        bare.push_back(Seconds([&] { expected = BareQueries(path); }));
        window.push_back(Seconds([&] { nodes = Open(); }));
        Close();
    }
    std::printf("%s: %d nodes of %d runs in %.0f ms (goal: under %.0f), bare queries %.0f ms, ratio %.1f\n",
                name, nodes, Runs, Median(window) * 1000, GoalSeconds * 1000, Median(bare) * 1000,
                Median(window) / Median(bare));
    return nodes == expected && nodes == Frequencies + Schedules * NodesOfASchedule &&
           Median(window) < GoalSeconds;
}

}  // namespace

int main(int argc, char** argv) {
    if (std::getenv("DISPLAY") == nullptr && std::getenv("QT_QPA_PLATFORM") == nullptr) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const QApplication application(argc, argv);
    std::string pattern = (fs::temp_directory_path() / "oxc-bench-XXXXXX").string();
    const fs::path folder = mkdtemp(pattern.data());
    const fs::path path = folder / "live.dat";
    MakeDatabase(path);
    frmMain::Instance().resize(1280, 800);
    frmMain::Instance().show();
    bool met = Measure("with the index", path);
    BareDatabase(path).Run("drop index ReportHistoryReport");
    met = Measure("without it", path) && met;
    fs::remove_all(folder);
    return met ? 0 : 1;
}
