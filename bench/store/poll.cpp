// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the poll over the schedules of a team's store, of which none is due, against a bare loop of libpq
// over the same rows. The argument is a file with a link to the store. The exit code is 1 if the goal is
// missed.
#include <libpq-fe.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "platform/postgresql/link.h"
#include "scheduler/Schedchk.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace {

constexpr int Repeats = 7;
constexpr double GoalRatio = 2;

// Reads what the poll reads of a row that is not due, one row at a time.
int BareLoop(const Link& link) {
    const char* const names[] = {"host", "port", "dbname", "user", nullptr};
    const char* const values[] = {link.host.c_str(), link.port.c_str(), link.database.c_str(),
                                  link.user.c_str(), nullptr};
    PGconn* connection = PQconnectdbParams(names, values, 0);
    PQclear(PQexec(connection, "set search_path = oxbow_courier, public; set jit = off"));
    const std::string today = cmFunc::FormatDateText(Today());
    const std::string select = "select * from ReportScheduler where StartDate <= '" + today +
                               "' and EndDate >= '" + today + "' order by rowid";
    PQsendQueryParams(connection, select.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0);
    PQsetSingleRowMode(connection);
    int rows = 0;
    while (PGresult* row = PQgetResult(connection)) {
        if (PQresultStatus(row) == PGRES_SINGLE_TUPLE) {
            const bool whole = PQgetvalue(row, 0, PQfnumber(row, "reportid"))[0] != '\0' &&
                               PQgetvalue(row, 0, PQfnumber(row, "nextrun"))[0] != '\0' &&
                               PQgetvalue(row, 0, PQfnumber(row, "runat"))[0] != '\0';
            rows += whole ? 1 : 0;
        }
        PQclear(row);
    }
    PQfinish(connection);
    return rows;
}

long PeakKiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

}  // namespace

int main(int argc, char** argv) {
    const std::optional<Link> link = argc == 2 ? ReadLink(argv[1]) : std::nullopt;
    if (!link) {
        std::fprintf(stderr, "usage: bench_store_poll LINK\n");
        return 2;
    }
    Global::ConnectionString = "Data Source=" + paths::FromMachine(argv[1]) + ";Persist Security Info=False";
    std::vector<double> bare;
    std::vector<double> poll;
    int rows = 0;
    const long before = PeakKiB();
    Global::Schedchk();
    const long growth = PeakKiB() - before;
    for (int repeat = 0; repeat < Repeats; ++repeat) {
        bare.push_back(Seconds([&] { rows = BareLoop(*link); }));
        poll.push_back(Seconds([] { Global::Schedchk(); }));
    }
    const double ratio = Median(poll) / Median(bare);
    std::printf("%d schedules, none due: poll %.1f ms, bare loop %.1f ms, ratio %.2f (goal: at most %.0f)\n",
                rows, Median(poll) * 1000, Median(bare) * 1000, ratio, GoalRatio);
    std::printf("peak memory of the poll: +%ld KiB\n", growth);
    return rows > 0 && ratio <= GoalRatio ? 0 : 1;
}
