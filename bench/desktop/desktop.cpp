// SPDX-License-Identifier: GPL-3.0-or-later
// Measures how long a Desktop window takes to fill with a folder of many schedules, as icons and as the
// table, against a bare loop of the SQLite library over the same query. Prints both times and their ratio.
#include <sqlite3.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "bench/desktop/measured_desk.h"
#include "bench/timing.h"

namespace {

namespace fs = std::filesystem;

constexpr int Schedules = 5'000;
constexpr int Repeats = 7;
constexpr double Goal = 0.5;  // seconds
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

void Print(const char* what, double time, double bare) {
    std::printf("%-34s %7.1f ms  %4.1f times the bare query%s\n", what, time * 1000, time / bare,
                time > Goal ? "  (goal missed)" : "");
}

}  // namespace

int main(int argc, char** argv) {
    std::string name = (fs::temp_directory_path() / "oxc-bench-XXXXXX").string();
    const fs::path folder = mkdtemp(name.data());
    const fs::path file = folder / "PressroomLive.dat";
    MakeDatabase(file);
    MeasuredDesk window(argc, argv, file);

    std::printf("A folder of %d schedules, read, listed and drawn:\n", Schedules);
    std::vector<double> queries;
    for (int repeat = 0; repeat < Repeats; ++repeat) {
        queries.push_back(Seconds([&] { BareQuery(file); }));
    }
    const double bare = Median(queries);
    std::printf("%-34s %7.1f ms\n", "bare query", bare * 1000);
    window.SelectFolder("1^Sales");
    Print("click in the tree, icons", Median(window.Times(Repeats, [&] { window.ClickTree(); })), bare);
    Print("table", Median(window.Times(Repeats, [&] { window.ShowTable("Sales"); })), bare);
    if (window.ItemCount() != Schedules) {
        std::fprintf(stderr, "bench_desktop: the list is not full\n");
        return 2;
    }
    std::fflush(stdout);
    fs::remove_all(folder);
    return 0;
}
