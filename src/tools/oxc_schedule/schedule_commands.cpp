// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that change and run single schedules.
#include "execution/on_demand/RunOnDemand.h"
#include "platform/base/marks.h"
#include "platform/base/text.h"
#include "scheduler/Frequencies.h"
#include "shared/Global.h"
#include "tools/hidden_arguments.h"
#include "tools/oxc_schedule/checks.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/next_text.h"
#include "tools/oxc_schedule/records.h"
#include "tools/oxc_schedule/schedule_rows.h"
#include "tools/secret_input.h"

namespace tools {
namespace {

constexpr const char* PasswordVariable = "OXC_SCHEDULE_PASSWORD";

// Returns the password of --user. The wizard takes no empty one.
std::string PasswordOf(const CommandLine& line) {
    const std::string password = line.Has("password-stdin")
                                     ? ReadSecret("Password of " + *line.Value("user") + ": ")
                                     : TakeFromEnvironment(PasswordVariable);
    if (password.empty()) {
        Refuse("The user " + Quoted(*line.Value("user")) +
               " needs a password: --password-stdin or the variable " + PasswordVariable);
    }
    if (!IsUtf8(password)) {
        Refuse("The password contains a byte that is not UTF-8");
    }
    if (password.find('\'') != std::string::npos) {
        Refuse("The password contains an apostrophe, which cannot be stored");
    }
    return password;
}

// Wrong usage is reported before anything else.
void CheckUsage(const CommandLine& line) {
    if (line.command == "add") {
        RequiredOption(line, "to");
        RequiredOption(line, "at");
    }
    if (line.Has("password-stdin") && !line.Has("user")) {
        throw ScheduleUsageError("--password-stdin needs --user");
    }
    if (line.Has("no-login") && line.Has("user")) {
        throw ScheduleUsageError("--no-login and --user exclude each other");
    }
    FrequencyOf(line, "");
}

void TakeLogon(const CommandLine& line, std::string& user, std::string& password, std::string& required) {
    if (!line.Has("user")) {
        return;
    }
    user = *line.Value("user");
    if (user.empty()) {
        Refuse("The user is empty");
    }
    RefuseMark("The user", user);
    password = PasswordOf(line);
    required = "T";
}

std::string CheckedTitle(const std::string& text) {
    std::string title = WithoutMark(text);
    if (title.empty()) {
        Refuse("The report has no title: give one with --title");
    }
    RefuseControls("The title", title);
    return title;
}

// Windows and commands find a schedule by title and folder.
void RefuseTaken(const std::string& title, const std::string& folder, const std::string& but = "0") {
    const auto taken = ReadSchedules("ReportTitle = " + SqlText(title) + " and Parent = " + SqlText(folder) +
                                     " and ReportID <> " + but);
    if (!taken.empty()) {
        Refuse("The folder " + Quoted(folder) + " has a schedule " + Quoted(title) + " already, number " +
               taken.front().id);
    }
}

Global::NewSchedule ScheduleOf(const CommandLine& line, const report::Report& report) {
    const DateRange dates = CheckedDates(line);
    Global::NewSchedule schedule{
        .sendTo = CheckedRecipients(line.All("to")),
        .subject = WithoutMark(line.ValueOr("subject", "")),
        .message = WithoutMark(line.ValueOr("message", "")),
        .startDate = dates.start,
        .endDate = dates.end,
        .runAt = CheckedTime(RequiredOption(line, "at")),
        .frequency = FrequencyOf(line, Global::frequencies::Daily),
        .nextRun = dates.start,
        .reportPath = {},
        .title = CheckedTitle(line.ValueOr("title", report.Title())),
        .selectionForm = WithoutMarks(line.ValueOr("formula", report.RecordSelectionFormula())),
        .format = CheckedFormat(line.ValueOr("format", "pdf"), Global::Runner::Single),
        .parent = FindFolder(line.ValueOr("folder", RootFolder)),
        .originalPath = GivenPath(line.names.front()),
        .userName = {},
        .password = {},
        .loginReq = "F"};
    TakeLogon(line, schedule.userName, schedule.password, schedule.loginReq);
    RefuseTaken(schedule.title, schedule.parent);
    return schedule;
}

Global::ScheduleChange ChangeOf(const CommandLine& line, const Global::NewSchedule& stored) {
    const auto given = [&line](const char* option, const std::string& otherwise) {
        return WithoutMark(line.ValueOr(option, otherwise));
    };
    std::string user = stored.userName, password = stored.password, required = stored.loginReq;
    if (line.Has("no-login")) {
        user = password = "";
        required = "F";
    }
    TakeLogon(line, user, password, required);
    return {.title = line.Has("title") ? CheckedTitle(*line.Value("title")) : stored.title,
            .sendTo = line.Has("to") ? CheckedRecipients(line.All("to")) : stored.sendTo,
            .subject = given("subject", stored.subject),
            .message = given("message", stored.message),
            .runAt = line.Has("at") ? CheckedTime(*line.Value("at")) : stored.runAt,
            .frequency = FrequencyOf(line, stored.frequency),
            .format = line.Has("format") ? CheckedFormat(*line.Value("format"), Global::Runner::Single)
                                         : stored.format,
            .selectionForm = WithoutMarks(line.ValueOr("formula", stored.selectionForm)),
            .parent = line.Has("move-to") ? FindFolder(*line.Value("move-to")) : stored.parent,
            .loginReq = required,
            .userName = user,
            .password = password};
}

// Schedules run the copy of the report, and its values are passed by position: values are checked against the
// copy.
NamedValues ValuesForCopy(const CommandLine& line, const StoredSchedule& stored) {
    try {
        return CheckedParameters(OpenReportFile(stored.row.reportPath), GivenParameters(line),
                                 stored.parameters);
    } catch (const RuntimeError& error) {
        if (!HasChanged(stored.row.originalPath, stored.row.reportPath)) {
            throw;
        }
        Refuse(TextOf(error) + ". The report file has changed since: oxc-schedule refresh copies it again");
    }
}

// A title or a folder that stays as it is may be taken, as the windows allow.
void RefuseMoved(const CommandLine& line, const Global::ScheduleChange& change, const std::string& id) {
    if (line.Has("move-to")) {
        FindFolder(change.parent);
    }
    if (line.Has("title") || line.Has("move-to")) {
        RefuseTaken(change.title, change.parent, id);
    }
}

}  // namespace

void AddSchedule(const CommandLine& line) {
    CheckUsage(line);
    const std::string path = GivenPath(line.names.front());
    report::Report& report = OpenReportFile(path);
    StoredSchedule schedule{.id = {}, .row = ScheduleOf(line, report), .parameters = {}};
    schedule.parameters = CheckedParameters(report, GivenParameters(line));
    InTransaction([&schedule, &path](ADODB::Connection& connection, CacheChange& cache) {
        schedule.row.parent = FindFolder(schedule.row.parent);
        RefuseTaken(schedule.row.title, schedule.row.parent);
        schedule.row.reportPath = cache.Copy(path);
        schedule.id = std::to_string(NextKey("ReportScheduler"));
        InsertScheduleRows(connection, schedule);
    });
    PrintChange(line,
                "Schedule " + schedule.id + ", " + Named(schedule.row) + ", is added. " +
                    FirstRunText(ItemOf(schedule.row)) + "\n",
                Result(schedule));
}

void SetSchedule(const CommandLine& line) {
    CheckUsage(line);
    const StoredSchedule stored = FindSchedule(line);
    const Global::ScheduleChange change = ChangeOf(line, stored.row);
    const NamedValues values = line.Has("p") ? ValuesForCopy(line, stored) : NamedValues{};
    InTransaction([&](ADODB::Connection& connection) {
        RefuseChanged(stored);
        RefuseMoved(line, change, stored.id);
        Global::UpdateSchedule(connection, stored.id, change);
        if (line.Has("p")) {
            ReplaceValues(connection, stored.id, values);
        }
    });
    PrintChange(line,
                "Schedule " + stored.id + ", " + Quoted(change.title) + " in the folder " +
                    Quoted(change.parent) + ", is changed.\n",
                Result(stored.id, change.title, change.parent, stored.row.nextRun));
}

void RemoveSchedule(const CommandLine& line) {
    StoredSchedule stored;
    InTransaction([&](ADODB::Connection& connection) {
        stored = FindSchedule(line);
        Global::DeleteSchedule(connection, stored.id);
    });
    PrintChange(line, "Schedule " + stored.id + ", " + Named(stored.row) + ", is removed with its history.\n",
                Result(stored));
}

void RunSchedule(const CommandLine& line) {
    const StoredSchedule stored = FindSchedule(line);
    const CommandPrompts boxes;
    bool isDelivered = false;
    try {
        isDelivered = Global::ExecuteSchedule(stored.id);
    } catch (...) {
        const RuntimeError error = CurrentError();
        Global::RecordFailedExecution(stored.id, error);
        Refuse(Global::ErrorText("An error was encountered. ", error));
    }
    if (!isDelivered) {
        Refuse(boxes.Complaint("Schedule " + stored.id + " is not delivered"));
    }
    PrintChange(line, boxes.Information(), Result(stored));
}

}  // namespace tools
