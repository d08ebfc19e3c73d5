// SPDX-License-Identifier: GPL-3.0-or-later
// Measures how long a Desktop window takes to fill with a folder of many schedules, as icons and as the
// table, against a bare loop of the SQLite library over the same query. Prints both times and their ratio.
#include <sqlite3.h>
#include <unistd.h>

#include <QMdiSubWindow>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "desktop/DeskWindows.h"
#include "desktop/DetailViews.h"
#include "desktop/frmDesk.h"
#include "platform/base/paths.h"
#include "platform/controls/child_area.h"
#include "platform/qt/application.h"
#include "platform/qt/display.h"
#include "platform/regfile/registry_file.h"
#include "shared/Global.h"

namespace {

namespace fs = std::filesystem;

constexpr int Schedules = 5'000;
constexpr int Repeats = 7;
constexpr double Goal = 500;  // milliseconds
const char* const Query = "select * from reportscheduler where parent = 'Sales' order by reporttitle";

void Check(int code, sqlite3* handle) {
    if (code != SQLITE_OK) {
        std::fprintf(stderr, "bench_desktop: %s\n", sqlite3_errmsg(handle));
        std::exit(2);
    }
}

void MakeDatabase(const fs::path& path) {
    std::ifstream schema(OXC_SCHEMA);
    const std::string tables{std::istreambuf_iterator<char>(schema), {}};
    const std::string rows =
        "insert into Folders(FolderName, Parent) values('Sales', 0);"
        "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
        std::to_string(Schedules) +
        ") insert into ReportScheduler(ReportTitle, Parent, Frequency, Format, NextRun, SendTo, Message) "
        "select 'Sales of region ' || i, 'Sales', 'Monthly', 'Acrobat Format (PDF)', '2999-01-01', "
        "'ann@example.com;bob@example.com;', printf('%.200c', 'x') from n";
    sqlite3* handle = nullptr;
    Check(sqlite3_open(path.c_str(), &handle), handle);
    Check(sqlite3_exec(handle, tables.c_str(), nullptr, nullptr, nullptr), handle);
    Check(sqlite3_exec(handle, rows.c_str(), nullptr, nullptr, nullptr), handle);
    sqlite3_close(handle);
}

void BareQuery(const fs::path& path) {
    sqlite3* handle = nullptr;
    Check(sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr), handle);
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(handle, Query, -1, &statement, nullptr), handle);
    std::size_t letters = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            letters += static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(handle);
    if (letters == 0) {
        std::fprintf(stderr, "bench_desktop: nothing read\n");
        std::exit(2);
    }
}

// Returns the median of several runs, in milliseconds.
double Milliseconds(const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < Repeats; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void Print(const char* what, double time, double bare) {
    std::printf("%-34s %7.1f ms  %4.1f times the bare query%s\n", what, time, time / bare,
                time > Goal ? "  (goal missed)" : "");
}

}  // namespace

int main(int argc, char** argv) {
    FallBackToOffscreen();
    Application application(argc, argv);
    std::string name = (fs::temp_directory_path() / "oxc-bench-XXXXXX").string();
    const fs::path folder = mkdtemp(name.data());
    const fs::path file = folder / "PressroomLive.dat";
    MakeDatabase(file);
    SetAppPath(paths::FromMachine(folder));
    RegistryFile settings(folder / "settings");
    SetRegistry(&settings);
    Global::ConnectionString = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + AppPath() +
                               "\\PressroomLive.dat;Persist Security Info=False";
    ChildArea area;
    area.resize(1200, 800);
    area.show();
    Global::CurrentFolderID = "0";
    frmDesk& window = *OpenDeskWindow(area);
    const auto untilDrawn = [&] {
        QApplication::processEvents();
        window.grab();
    };

    std::printf("A folder of %d schedules, read, listed and drawn:\n", Schedules);
    const double bare = Milliseconds([&] { BareQuery(file); });
    std::printf("%-34s %7.1f ms\n", "bare query", bare);
    window.tvwFolder->Nodes()("1^Sales").Selected(true);
    Print("click in the tree, icons", Milliseconds([&] {
              window.tvwFolder_Click();
              untilDrawn();
          }),
          bare);
    Print("table", Milliseconds([&] {
              bldDetails("Sales");
              untilDrawn();
          }),
          bare);
    if (window.lsvDesk->ListItems().Count() != Schedules) {
        std::fprintf(stderr, "bench_desktop: the list is not full\n");
        return 2;
    }
    std::fflush(stdout);
    fs::remove_all(folder);
    return 0;
}
