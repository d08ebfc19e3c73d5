// SPDX-License-Identifier: GPL-3.0-or-later
#include "schedule_program.h"

#include <chrono>

using testing::HasSubstr;

namespace {

class Status : public StartedProgram {
 protected:
    // The trace of a poll that ended some seconds ago, with 15 seconds between two polls.
    void Polled(std::int64_t ago) const {
        const auto now = std::chrono::duration_cast<std::chrono::seconds>(
            std::chrono::system_clock::now().time_since_epoch());
        WriteBytes(m_folder / "app" / "PressroomLive.polled", std::to_string(now.count() - ago) + " 15\n");
    }
    int Code(const std::string& options = {}) const {
        const ScheduleOutcome outcome = Run("status " + options);
        EXPECT_EQ(outcome.complaint, "");
        return outcome.code;
    }
};

}  // namespace

TEST_F(Status, WithoutAPollIsTwo) {
    const ScheduleOutcome outcome = Run("status");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.output,
              "Last poll: none; the scheduler has not polled in this folder.\n"
              "Failed runs in the last 24 hours: 0 of schedules, 0 of packages.\n"
              "Stored: 0 schedules, 0 packages.\n");
}

TEST_F(Status, AgeOfTheLastPollDecides) {
    Polled(5);
    EXPECT_EQ(Code(), 0);
    Polled(90);
    EXPECT_EQ(Code(), 1);
    EXPECT_EQ(Code("--warn 3600"), 0);
    EXPECT_EQ(Code("--critical 80"), 2);
    Polled(700);
    EXPECT_EQ(Code(), 2);
}

// A clock that was a year ahead leaves such a trace, and a scheduler that has ended would count as polling
// for a year.
TEST_F(Status, PollInTheFutureCountsAsOneThatLongAgo) {
    Polled(-5);
    EXPECT_EQ(Code(), 0);
    Polled(-90);
    EXPECT_EQ(Code(), 1);
    Polled(-700);
    EXPECT_EQ(Code(), 2);
    EXPECT_THAT(Run("status").output,
                testing::ContainsRegex(
                    "^Last poll: (69[0-9]|700) seconds in the future; the clock has been set back, and "
                    "no poll has ended since.\n"));
    EXPECT_THAT(Run("status --prometheus").output,
                testing::ContainsRegex("oxc_last_poll_age_seconds (69[0-9]|700)\n"));
}

TEST_F(Status, FailureInTheFutureIsNoneOfTheLastHours) {
    Polled(5);
    Sql("insert into ReportHistory values(1, datetime('now', 'localtime', '+300 days'), 'Failure', 'x')");
    EXPECT_EQ(Code(), 0);
    Sql("insert into ReportHistory values(1, datetime('now', 'localtime', '-1 hours'), 'Failure', 'x')");
    EXPECT_EQ(Code(), 1);
    EXPECT_THAT(Run("status").output, HasSubstr("hours: 1 of schedules, 0 of packages."));
}

TEST_F(Status, TraceThatHoldsSomethingElseIsNone) {
    for (const char* text : {"", "x 15\n", "15\n", "99999999999999999999 15\n", "1 15"}) {
        WriteBytes(m_folder / "app" / "PressroomLive.polled", text);
        EXPECT_EQ(Code(), 2) << text;
    }
}

TEST_F(Status, FailuresOfTheLastHoursAreOne) {
    Polled(5);
    Sql("insert into ReportHistory values(1, datetime('now', 'localtime', '-30 hours'), 'Failure', 'x'), "
        "(1, datetime('now', 'localtime', '-1 hours'), 'Success', 'None')");
    EXPECT_EQ(Code(), 0);
    EXPECT_EQ(Code("--since 48"), 1);
    Sql("insert into ReportBatchHstry values('', strftime('%Y-%m-%d,%H:%M:%S', 'now', 'localtime'), 'T', "
        "'x')");
    EXPECT_EQ(Code(), 1);
    EXPECT_THAT(Run("status").output, HasSubstr("hours: 0 of schedules, 1 of packages."));
}

TEST_F(Status, PrometheusGetsEveryFigure) {
    std::filesystem::create_directories(m_folder.Folder());
    std::filesystem::create_directories(m_folder / "outbox");
    WriteBytes(m_folder / "outbox" / "1.eml", "");
    WriteBytes(m_folder.MailProfile(), "[Profile]\nFrom=r@example.com\nTransport=outbox\nOutboxFolder=" +
                                           (m_folder / "outbox").string() + "\n");
    Output(AddPlain);
    Polled(5);
    const std::string text = Output("status --prometheus");
    EXPECT_THAT(text, HasSubstr("# HELP oxc_status 0 polls, 1 late or runs failed, 2 no poll or no answer.\n"
                                "# TYPE oxc_status gauge\noxc_status 0\n"));
    EXPECT_THAT(text, testing::ContainsRegex("oxc_last_poll_age_seconds ([5-9]|[1-9][0-9])\n"));
    EXPECT_THAT(text, HasSubstr("oxc_failures{kind=\"schedule\",hours=\"24\"} 0\n"
                                "oxc_failures{kind=\"package\",hours=\"24\"} 0\n"));
    EXPECT_THAT(text, HasSubstr("oxc_items{kind=\"schedule\"} 1\noxc_items{kind=\"package\"} 0\n"));
    EXPECT_THAT(text, HasSubstr("oxc_outbox_messages 1\n"));
    EXPECT_THAT(Output("status --json"), HasSubstr("\"outbox\": 1"));
}

// On-demand runs are written in the form of the region of who runs them: here that of the United States, on a
// day that no other order can read, and one that can be read in both.
TEST_F(Status, FailuresCountInTheFormsOfAllRegions) {
    Polled(5);
    Sql("insert into ReportHistory values(1, '11/30/1999 10:00:00', 'Failure', 'x'), (1, 'nonsense', "
        "'Failure', "
        "'x'), (1, strftime('%m/%d/%Y %H:%M:%S', 'now', 'localtime', '-1 hours'), '', 'x'), "
        "(1, strftime('%d.%m.%Y %H:%M:%S', 'now', 'localtime', '-2 hours'), '', 'x')");
    const ScheduleOutcome outcome = Run("status");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.output, HasSubstr("hours: 2 of schedules, 0 of packages."));
    EXPECT_THAT(Output("history --limit 2"),
                testing::ContainsRegex("ERROR\n[0-9/]+ [0-9:]+ .*\n[0-9.]+ [0-9:]+ "));
}

TEST_F(Status, WithoutAnAnswerIsTwoInEveryForm) {
    WriteBytes(m_folder / "app" / "PressroomLive.dat", "this is no database");
    const std::string why = Refusal("status", 2);
    EXPECT_THAT(why, HasSubstr("PressroomLive.dat\" is not a database"));
    ScheduleOutcome outcome = Run("status --prometheus");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.output,
              "# HELP oxc_status 0 polls, 1 late or runs failed, 2 no poll or no answer.\n"
              "# TYPE oxc_status gauge\noxc_status 2\n");
    outcome = Run("status --json");
    EXPECT_EQ(outcome.code, 2);
    EXPECT_THAT(outcome.output, HasSubstr("    \"status\": 2\n"));
    EXPECT_THAT(outcome.output, HasSubstr("\"error\": \"The file "));
    EXPECT_EQ(Refusal("status --json --prometheus", 2),
              "--json and --prometheus exclude each other (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("status --warn soon", 2),
              "--warn needs a whole number from 1 to 31536000, not \"soon\" (see oxc-schedule --help)");
}

// A mail of an HTML report that fails leaves no row in the history.
TEST_F(Status, MailsThatFailedInTheLastPollAreOne) {
    Polled(5);
    std::string trace = ReadBytes(m_folder / "app" / "PressroomLive.polled");
    trace.insert(trace.size() - 1, " 2");
    WriteBytes(m_folder / "app" / "PressroomLive.polled", trace);
    const ScheduleOutcome outcome = Run("status");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.output, HasSubstr("\nMails of schedules that failed in the last poll: 2.\n"));
    EXPECT_THAT(Run("status --prometheus").output, HasSubstr("\noxc_undelivered 2\n"));
    EXPECT_THAT(Run("status --json").output, HasSubstr("\"undelivered\": 2"));
}
