// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/NextDue.h"

#include "platform/contracts/adodb.h"
#include "platform/contracts/clock.h"
#include "scheduler/ComingRuns.h"
#include "shared/Global.h"

namespace Global {

namespace {

struct Columns {
    const char* table;
    const char* title;
    const char* next;
    const char* time;
};

std::optional<DateValue> MomentOf(const ADODB::Recordset& row, const Columns& columns, DateValue now) {
    constexpr int Years = 1000;
    const auto text = [&row](const char* name) { return row.Fields(name).Value.Text(); };
    try {
        // The same date again: only the first run is asked for.
        const std::vector<ComingRun> runs =
            ComingRuns({text("StartDate"), text("EndDate"), text(columns.next), text(columns.time),
                        [](DateValue date) { return date; }},
                       now, AddMonths(now, 12 * Years));
        return runs.empty() ? std::nullopt : std::optional(runs.front().moment);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

void FindNextIn(RunKind kind, const Columns& columns, DateValue now, std::optional<NextDue>& found) {
    ADODB::Recordset rows;
    rows.Open(std::string("select * from ") + columns.table, ConnectionString);
    for (; !rows.EOF_(); rows.MoveNext()) {
        const std::optional<DateValue> moment = MomentOf(rows, columns, now);
        if (moment && (!found || *moment < found->moment)) {
            found = NextDue{*moment, kind, rows.Fields("ReportID").Value.Text(),
                            rows.Fields(columns.title).Value.Text()};
        }
    }
    rows.Close();
}

}  // namespace

std::optional<NextDue> FindNextDue() {
    std::optional<NextDue> found;
    const DateValue now = Now();
    FindNextIn(RunKind::Schedule, {"ReportScheduler", "ReportTitle", "NextRun", "RunAt"}, now, found);
    FindNextIn(RunKind::Package, {"ReportBatch", "BatchName", "NextRunDate", "RunTime"}, now, found);
    return found;
}

}  // namespace Global
