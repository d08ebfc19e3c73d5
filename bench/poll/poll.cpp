// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the poll over many schedules of which none is due, against a bare loop of the SQLite library over
// the same columns and rows: the cost of the data access above the library, and that memory does not grow
// with the rows. The exit code is 1 if a goal is missed.
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "scheduler/Schedchk.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace {

namespace fs = std::filesystem;

constexpr int FewRows = 10'000;
constexpr int ManyRows = 100'000;
constexpr int Repeats = 9;
constexpr double GoalRatio = 2;
constexpr long GoalGrowthKiB = 1024;  // from few rows to many

void Check(int code, sqlite3* handle) {
    if (code != SQLITE_OK && code != SQLITE_DONE && code != SQLITE_ROW) {
        std::fprintf(stderr, "bench_poll: %s\n", sqlite3_errmsg(handle));
        std::exit(2);
    }
}

void Run(sqlite3* handle, const std::string& statements) {
    Check(sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr), handle);
}

void MakeDatabase(const fs::path& path, int rows) {
    std::ifstream schema(OXC_SCHEMA);
    sqlite3* handle = nullptr;
    Check(sqlite3_open(path.c_str(), &handle), handle);
    Run(handle, {std::istreambuf_iterator<char>(schema), {}});
    Run(handle, "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
                    std::to_string(rows) +
                    ") insert into ReportScheduler(SendTo, Subject, Message, StartDate, EndDate, RunAt, "
                    "Frequency, NextRun,"
                    " ReportPath, ReportTitle, Client, SelectionForm, Format, Parent, OriginalPath, "
                    "UserName, [Password],"
                    " LoginReq) select 'ann@example.com;bob@example.com;', 'Sales of region ' || i, "
                    "printf('%.200c', 'x'),"
                    " '2003-01-01', '3000-12-31', '08:30', 'Monthly', '2999-01-01', 'Z:\\app\\Cache\\sales' "
                    "|| i || '.rpt',"
                    " 'Sales ' || i, 'NONE', '{Orders.Region} = ' || i, 'Acrobat Format (PDF)', 'Desktop',"
                    " 'Z:\\reports\\sales.rpt', 'reader', 'secret', 'F' from n");
    Check(sqlite3_close(handle), handle);
}

// Reads what the poll reads of a row that is not due.
int BareLoop(const fs::path& path) {
    sqlite3* handle = nullptr;
    Check(sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr), handle);
    const std::string today = cmFunc::FormatDateText(Today());
    const std::string select =
        "Select * from ReportScheduler Where StartDate <= '" + today + "' and EndDate >= '" + today + "'";
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(handle, select.c_str(), -1, &statement, nullptr), handle);
    const auto columnOf = [statement](const std::string& name) {
        int column = 0;
        while (name != sqlite3_column_name(statement, column)) {
            ++column;
        }
        return column;
    };
    const int id = columnOf("ReportID");
    const int nextRun = columnOf("NextRun");
    const int runAt = columnOf("RunAt");
    int rows = 0;
    for (; sqlite3_step(statement) == SQLITE_ROW; ++rows) {
        const bool whole = sqlite3_column_int64(statement, id) > 0 &&
                           sqlite3_column_text(statement, nextRun) != nullptr &&
                           sqlite3_column_text(statement, runAt) != nullptr;
        if (!whole) {
            break;
        }
    }
    Check(sqlite3_finalize(statement), handle);
    sqlite3_close(handle);
    return rows;
}

void Poll(const fs::path& path) {
    Global::ConnectionString = "Data Source=" + paths::FromMachine(path) + ";Persist Security Info=False";
    Global::Schedchk();
}

// Runs in a process of its own, so that each run's memory is measured alone.
template <typename Body>
long InOwnProcess(Body body) {
    int ends[2];
    if (pipe(ends) != 0) {
        std::exit(2);
    }
    const pid_t child = fork();
    if (child == 0) {
        const long value = body();
        _exit(write(ends[1], &value, sizeof value) == sizeof value ? 0 : 2);
    }
    long value = 0;
    const bool whole = read(ends[0], &value, sizeof value) == sizeof value;
    int status = 0;
    waitpid(child, &status, 0);
    close(ends[0]);
    close(ends[1]);
    if (!whole || status != 0) {
        std::exit(2);
    }
    return value;
}

long PeakKiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

long PeakGrowthKiB(const fs::path& path) {
    return InOwnProcess([&path] {
        const long before = PeakKiB();
        Poll(path);
        return PeakKiB() - before;
    });
}

}  // namespace

int main() {
    std::string pattern = (fs::temp_directory_path() / "oxc-bench-XXXXXX").string();
    const fs::path folder = mkdtemp(pattern.data());
    const fs::path few = folder / "few.dat";
    const fs::path many = folder / "many.dat";
    InOwnProcess([&] {
        MakeDatabase(few, FewRows);
        MakeDatabase(many, ManyRows);
        return 0L;
    });
    const long fewGrowth = PeakGrowthKiB(few);
    const long manyGrowth = PeakGrowthKiB(many);

    std::vector<double> bare;
    std::vector<double> poll;
    int rows = 0;
    for (int repeat = 0; repeat < Repeats; ++repeat) {
        bare.push_back(Seconds([&] { rows = BareLoop(many); }));
        poll.push_back(Seconds([&] { Poll(many); }));
    }
    fs::remove_all(folder);
    const double ratio = Median(poll) / Median(bare);
    const long growth = manyGrowth - fewGrowth;
    std::printf("%d schedules, none due: poll %.1f ms, bare loop %.1f ms, ratio %.2f (goal: at most %.0f)\n",
                rows, Median(poll) * 1000, Median(bare) * 1000, ratio, GoalRatio);
    std::printf("peak memory: +%ld KiB at %d rows, +%ld KiB at %d rows (goal: at most %ld KiB more)\n",
                fewGrowth, FewRows, manyGrowth, ManyRows, GoalGrowthKiB);
    return rows == ManyRows && ratio <= GoalRatio && growth <= GoalGrowthKiB ? 0 : 1;
}
