// SPDX-License-Identifier: GPL-3.0-or-later
// The command that prints what runs in the coming days.
#include <algorithm>
#include <optional>

#include "platform/contracts/clock.h"
#include "scheduler/ComingRuns.h"
#include "store/TextConventions.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/next_text.h"
#include "tools/oxc_schedule/records.h"

namespace tools {
namespace {

struct Line {
    Global::ComingRun run;
    std::string kind, id, folder, title, note;
};

// Year-month-day in every region, as the stored dates are.
std::string MomentText(const Global::ComingRun& run) {
    const std::string text = cmFunc::FormatMomentText(run.moment);
    return text.substr(0, text.rfind(':'));  // without seconds, which are always 0
}

std::string NoteOf(const Global::ComingRun& run) {
    const std::string many = run.isAtEveryPoll ? "at every poll from then on, each day"
                             : run.count > 1   ? std::to_string(run.count) + " missed runs, one in each poll"
                                               : "";
    return std::string(run.isDue ? "due now" : "") + (run.isDue && !many.empty() ? ", " : "") + many;
}

void Append(std::vector<Line>& lines, const Global::RepeatingItem& item, const Line& named, DateValue now,
            DateValue until) {
    Line line = named;
    try {
        for (const Global::ComingRun& run : Global::ComingRuns(item, now, until)) {
            line.run = run;
            line.note = NoteOf(run);
            lines.push_back(line);
        }
    } catch (const RuntimeError& error) {
        line.run.moment = now;
        line.note = "its dates " + Quoted(item.nextRun) + " and " + Quoted(item.runAt) +
                    " cannot be read: " + error.Description();
        lines.push_back(line);
    }
}

std::vector<Line> ReadLines(DateValue now, DateValue until) {
    std::vector<Line> lines;
    for (const StoredSchedule& stored : ReadSchedules()) {
        const Global::NewSchedule& row = stored.row;
        Append(lines, ItemOf(row), {{}, "schedule", stored.id, row.parent, row.title, {}}, now, until);
    }
    for (const StoredPackage& stored : ReadPackages()) {
        const Global::NewPackage& row = stored.row;
        Append(lines, ItemOf(row), {{}, "package", stored.id, {}, row.name, {}}, now, until);
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const Line& left, const Line& right) { return left.run.moment < right.run.moment; });
    return lines;
}

}  // namespace

void ShowComingRuns(const CommandLine& line) {
    constexpr std::int64_t Usual = 7, Most = 3660;
    const DateValue now = Now();
    const std::vector<Line> lines =
        ReadLines(now, AddDays(now, line.Number("days", 1, Most).value_or(Usual)));
    if (line.Has("json")) {
        QJsonArray array;
        for (const Line& one : lines) {
            array.append(QJsonObject{{"moment", Json(MomentText(one.run))},
                                     {"kind", Json(one.kind)},
                                     {"id", Json(one.id).toLongLong()},
                                     {"folder", Json(one.folder)},
                                     {"title", Json(one.title)},
                                     {"due", one.run.isDue},
                                     {"everyPoll", one.run.isAtEveryPoll},
                                     {"runs", static_cast<qint64>(one.run.count)},
                                     {"note", Json(one.note)}});
        }
        return Print(array);
    }
    std::vector<std::vector<std::string>> rows = {{"MOMENT", "KIND", "ID", "FOLDER", "TITLE", "NOTE"}};
    for (const Line& one : lines) {
        rows.push_back({MomentText(one.run), one.kind, one.id, one.folder, one.title, one.note});
    }
    PrintTable(rows);
}

}  // namespace tools
