// SPDX-License-Identifier: GPL-3.0-or-later
// The command for monitors: does the scheduler poll, did runs fail, what waits in the outbox.
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "platform/base/convert.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/shared_store.h"
#include "platform/mail/transport/outbox.h"
#include "scheduler/PollTrace.h"
#include "shared/Global.h"
#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/commands.h"
#include "tools/oxc_schedule/history_moment.h"
#include "tools/oxc_schedule/records.h"

namespace tools {
namespace {

struct Status {
    std::optional<Global::PollTrace> poll;
    // Seconds between the last poll and now. A clock that was ahead leaves a poll in the future: it counts as
    // one that long ago, as no poll has ended since.
    std::int64_t age = 0;
    bool isInFuture = false;
    std::int64_t hours = 0;
    std::int64_t failures = 0, packageFailures = 0;  // in these hours
    std::size_t schedules = 0, packages = 0;
    std::optional<std::vector<ADODB::HeldClaim>> claims;  // of all schedulers of a shared store
    std::optional<std::size_t> outbox;                    // messages; nullopt if the profile has no outbox
    int code = 0;
};

// Counts the rows from `since` until now. A clock that was ahead leaves rows in the future.
std::int64_t CountSince(const std::string& statement, DateValue since) {
    const DateValue now = Now();
    ADODB::Recordset rows;
    rows.Open(statement, Global::ConnectionString);
    std::int64_t count = 0;
    for (; !rows.EOF_(); rows.MoveNext()) {
        const auto moment = HistoryMoment(rows.Fields("LastRun").Value.Text(), now);
        count += moment && *moment >= since && *moment <= now ? 1 : 0;
    }
    rows.Close();
    return count;
}

std::size_t CountRows(const std::string& table) {
    ADODB::Recordset rows;
    rows.Open("select count(*) from " + table, Global::ConnectionString);
    const std::int32_t count = CLng(rows.Fields(0).Value);
    rows.Close();
    return static_cast<std::size_t>(count);
}

std::optional<std::int64_t> SecondsOption(const CommandLine& line, const char* option) {
    constexpr std::int64_t Most = 365LL * 24 * 3600;
    return line.Number(option, 1, Most);
}

std::int64_t HoursOption(const CommandLine& line) {
    constexpr std::int64_t Usual = 24, Most = 24 * 31;
    return line.Number("since", 1, Most).value_or(Usual);
}

// A poll takes as long as its reports, so that a late one is no failure at once.
int CodeOf(const Status& status, const CommandLine& line) {
    constexpr std::int64_t ShortestWarning = 60, ShortestCritical = 600;
    const std::int64_t interval = status.poll ? status.poll->seconds : 0;
    const std::int64_t warn = SecondsOption(line, "warn").value_or(std::max(ShortestWarning, 3 * interval));
    const std::int64_t critical =
        SecondsOption(line, "critical").value_or(std::max(ShortestCritical, 10 * interval));
    if (!status.poll || status.age > critical) {
        return 2;
    }
    return status.age > warn || status.failures + status.packageFailures + status.poll->undelivered > 0 ? 1
                                                                                                        : 0;
}

Status ReadStatus(const CommandLine& line) {
    Status status;
    status.poll = Global::ReadPollTrace();
    const std::int64_t now = TheClock().Moment().seconds;
    status.age = status.poll ? std::abs(now - status.poll->moment) : 0;
    status.isInFuture = status.poll && status.poll->moment > now;
    status.hours = HoursOption(line);
    const DateValue since = DateValue::FromSeconds(Now().Seconds() - status.hours * 3600);
    status.failures = CountSince("select LastRun from ReportHistory where Status <> 'Success'", since);
    status.packageFailures =
        CountSince("select LastRun from ReportBatchHstry where ErrMsg is not null", since);
    status.schedules = CountRows("ReportScheduler");
    status.packages = CountRows("ReportBatch");
    if (IsSharedStore(Global::ConnectionString)) {
        status.claims = ADODB::HeldClaims(Global::ConnectionString);
    }
    status.outbox = mailer::CountOutbox();
    status.code = CodeOf(status, line);
    return status;
}

std::string KindOf(const ADODB::HeldClaim& claim) {
    return claim.table == "ReportBatch" ? "package" : "schedule";
}

std::string Metric(const std::string& name, const std::string& help, const std::string& labels,
                   std::int64_t value) {
    return (help.empty() ? "" : "# HELP " + name + " " + help + "\n# TYPE " + name + " gauge\n") + name +
           labels + " " + std::to_string(value) + "\n";
}

std::string StatusMetric(int code) {
    return Metric("oxc_status", "0 polls, 1 late or runs failed, 2 no poll or no answer.", "", code);
}

std::int64_t CountClaims(const std::vector<ADODB::HeldClaim>& claims, std::string_view kind) {
    return std::count_if(claims.begin(), claims.end(),
                         [kind](const ADODB::HeldClaim& claim) { return KindOf(claim) == kind; });
}

std::string PrometheusText(const Status& status) {
    std::string text = StatusMetric(status.code);
    if (status.poll) {
        text += Metric("oxc_last_poll_timestamp_seconds", "End of the last poll.", "", status.poll->moment);
        text += Metric("oxc_last_poll_age_seconds", "Time since the last poll.", "", status.age);
        text += Metric("oxc_undelivered", "Schedules whose mail failed in the last poll.", "",
                       status.poll->undelivered);
    }
    const std::string hours = "\",hours=\"" + std::to_string(status.hours) + "\"}";
    text +=
        Metric("oxc_failures", "Failed runs in the last hours.", "{kind=\"schedule" + hours, status.failures);
    text += Metric("oxc_failures", "", "{kind=\"package" + hours, status.packageFailures);
    text += Metric("oxc_items", "Schedules and packages.", "{kind=\"schedule\"}",
                   static_cast<std::int64_t>(status.schedules));
    text += Metric("oxc_items", "", "{kind=\"package\"}", static_cast<std::int64_t>(status.packages));
    if (status.claims) {
        text += Metric("oxc_claims", "Runs under way on the store, of all schedulers.", "{kind=\"schedule\"}",
                       CountClaims(*status.claims, "schedule"));
        text += Metric("oxc_claims", "", "{kind=\"package\"}", CountClaims(*status.claims, "package"));
    }
    if (status.outbox) {
        text += Metric("oxc_outbox_messages", "Messages in the outbox folder.", "",
                       static_cast<std::int64_t>(*status.outbox));
    }
    return text;
}

QJsonObject Describe(const Status& status) {
    QJsonObject object{{"status", status.code},
                       {"hours", static_cast<qint64>(status.hours)},
                       {"failures", static_cast<qint64>(status.failures)},
                       {"packageFailures", static_cast<qint64>(status.packageFailures)},
                       {"schedules", static_cast<qint64>(status.schedules)},
                       {"packages", static_cast<qint64>(status.packages)}};
    if (status.poll) {
        object.insert("lastPoll", static_cast<qint64>(status.poll->moment));
        object.insert("age", static_cast<qint64>(status.age));
        object.insert("undelivered", static_cast<qint64>(status.poll->undelivered));
    }
    if (status.claims) {
        QJsonArray claims;
        for (const ADODB::HeldClaim& claim : *status.claims) {
            claims.append(QJsonObject{
                {"kind", Json(KindOf(claim))}, {"id", Json(claim.key)}, {"holder", Json(claim.holder)}});
        }
        object.insert("underWay", claims);
    }
    if (status.outbox) {
        object.insert("outbox", static_cast<qint64>(*status.outbox));
    }
    return object;
}

std::string Sentence(const Status& status) {
    std::string text = "Last poll: none; the scheduler has not polled in this folder.\n";
    if (status.poll) {
        text = "Last poll: " + std::to_string(status.age) +
               (status.isInFuture
                    ? " seconds in the future; the clock has been set back, and no poll has ended since.\n"
                    : " seconds ago.\n");
    }
    if (status.poll && status.poll->undelivered > 0) {
        text +=
            "Mails of schedules that failed in the last poll: " + std::to_string(status.poll->undelivered) +
            ".\n";
    }
    text += "Failed runs in the last " + std::to_string(status.hours) +
            " hours: " + std::to_string(status.failures) + " of schedules, " +
            std::to_string(status.packageFailures) + " of packages.\n";
    text += "Stored: " + std::to_string(status.schedules) + " schedules, " + std::to_string(status.packages) +
            " packages.\n";
    for (const ADODB::HeldClaim& claim : status.claims.value_or(std::vector<ADODB::HeldClaim>())) {
        text += "Under way: " + KindOf(claim) + " " + claim.key + ", by " + claim.holder + "\n";
    }
    if (status.outbox) {
        text += "Outbox: " + std::to_string(*status.outbox) + " messages.\n";
    }
    return text;
}

}  // namespace

void CheckStatusOptions(const CommandLine& line) {
    SecondsOption(line, "warn");
    SecondsOption(line, "critical");
    HoursOption(line);
}

void ShowNoStatus(const CommandLine& line, const std::string& why) {
    Complain("oxc-schedule", why);
    if (line.Has("json")) {
        Print(QJsonObject{{"status", 2}, {"error", Json(why)}});
    } else if (line.Has("prometheus")) {
        Print(StatusMetric(2));
    }
}

int ShowStatus(const CommandLine& line) {
    const Status status = ReadStatus(line);
    if (line.Has("json")) {
        Print(Describe(status));
    } else {
        Print(line.Has("prometheus") ? PrometheusText(status) : Sentence(status));
    }
    return status.code;
}

}  // namespace tools
