// SPDX-License-Identifier: GPL-3.0-or-later
// The mails of every attempt at one run have one date, as long as one of them may have arrived.
#include "scheduler/Attempt.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "platform/base/paths.h"
#include "platform/contracts/process.h"
#include "scheduler/BatchReport.h"
#include "scheduler/Schedchk.h"
#include "support/run_fixture.h"

namespace {

const RuntimeError Lost(err::MailboxOrServer, "the connection is lost");

class Attempts : public fakes::PackageRunFixture {
 protected:
    Attempts() : PackageRunFixture(fakes::At(2026, 11, 21, 14, 0, 0)) {
        SetCommand("-sched");
        engine.reports["Z:\\reports\\sales.rpt"] = {};
    }
    ~Attempts() override { SetCommand({}); }

    void Poll() {
        testing::internal::CaptureStderr();
        Global::BatchReport();
        Global::Schedchk();
        testing::internal::GetCapturedStderr();
    }
    void WaitMinutes(int minutes) {
        constexpr int Minute = 60;
        clock.now = DateValue::FromSeconds(clock.now.Seconds() + minutes * Minute);
    }
    std::filesystem::path File() const { return database.Folder() / "PressroomLive.begun"; }
    bool IsKept() const { return std::filesystem::exists(File()); }
    // What a process knows that starts now.
    static void StartAgain() {
        const std::string app = AppPath();
        SetAppPath("Z:\\nowhere");
        {
            const Global::Attempt elsewhere({});
            MAPI::DueRun::Date();
        }
        SetAppPath(app);
    }
    // Minutes after the first message, of each message of a run whose sending was started.
    std::vector<std::int64_t> Minutes() const {
        std::vector<std::int64_t> minutes;
        for (const auto& date : mail.dates) {
            if (date) {
                // A run takes some seconds.
                constexpr double Minute = 60;
                minutes.push_back(std::llround((date->seconds - mail.dates.front()->seconds) / Minute));
            }
        }
        return minutes;
    }
    void Html() { fakes::Insert(database, {.nextRun = "2026-11-21", .format = "DHTML"}); }
};

using Numbers = std::vector<std::int64_t>;

TEST_F(Attempts, CopiesOfARunHaveTheDateOfTheFirstAlsoInTheNextProcess) {
    Html();
    mail.sendErrors = {Lost, Lost};
    Poll();
    EXPECT_TRUE(IsKept());
    WaitMinutes(5);
    Poll();
    StartAgain();
    WaitMinutes(5);
    Poll();
    EXPECT_EQ(Minutes(), (Numbers{0, 0, 0}));
    EXPECT_EQ(mail.sent.size(), 1U);
    EXPECT_FALSE(IsKept());
}

TEST_F(Attempts, CopiesOfAPackageHaveTheDateOfTheFirst) {
    Package();
    Detail(1, "1>a", "Acrobat");
    mail.sendErrors = {Lost};
    mail.logonErrors = {std::nullopt, RuntimeError(77, "no alert")};
    EXPECT_THROW(Poll(), RuntimeError);
    testing::internal::GetCapturedStderr();
    EXPECT_TRUE(IsKept());
    WaitMinutes(5);
    Poll();
    EXPECT_EQ(Minutes(), (Numbers{0, 0}));
    EXPECT_FALSE(IsKept());
}

TEST_F(Attempts, RefusedMailIsNoCopyOfTheNextOne) {
    Html();
    mail.sendErrors = {RuntimeError(77, "refused"), std::nullopt, RuntimeError(err::MailboxFull, "full")};
    Poll();  // the second message is the alert
    EXPECT_FALSE(IsKept());
    WaitMinutes(5);
    Poll();
    EXPECT_FALSE(IsKept());
    WaitMinutes(5);
    Poll();
    EXPECT_EQ(Minutes(), (Numbers{0, 5, 10}));
}

TEST_F(Attempts, RunWithoutAMailIsForgotten) {
    fakes::Insert(database, {.path = "Z:\\none.rpt", .nextRun = "2026-11-21"});
    Poll();
    EXPECT_FALSE(IsKept());
}

TEST_F(Attempts, EveryRunHasADateOfItsOwn) {
    fakes::Insert(database, {.nextRun = "2026-11-20", .format = "DHTML"});
    mail.sendErrors = {Lost};
    Poll();
    WaitMinutes(5);
    Poll();
    WaitMinutes(5);
    Poll();
    EXPECT_EQ(Minutes(), (Numbers{0, 0, 10}));
}

TEST_F(Attempts, AlertHasTheDateOfItsOwnMoment) {
    Html();
    mail.sendErrors = {RuntimeError(77, "refused")};
    Poll();
    ASSERT_EQ(mail.dates.size(), 2U);
    EXPECT_FALSE(mail.dates[1].has_value());
}

TEST_F(Attempts, DateIsNotedUntilTheRunIsRecorded) {
    Html();
    mail.sendErrors = {Lost};
    Poll();
    std::ostringstream text;
    text << std::ifstream(File()).rdbuf();
    EXPECT_EQ(text.str(),
              "schedule\t1\t2026-11-21\t00:00\t" + std::to_string(mail.dates[0]->seconds) + "\tend\n");
}

TEST_F(Attempts, DateIsTheMomentOfTheMailAndNotOfTheStart) {
    Html();
    engine.onExport = [this](const std::string&) { WaitMinutes(30); };
    const std::int64_t start = TheClock().Moment().seconds;
    Poll();
    ASSERT_EQ(mail.dates.size(), 1U);
    EXPECT_GE(mail.dates[0]->seconds, start + 1800);
}

TEST_F(Attempts, DateOfAWeekAgoOrOfTheFutureCountsAsForgotten) {
    for (const int minutes : {6 * 24 * 60, -2 * 60}) {
        mail.dates.clear();
        database.Run("delete from ReportScheduler");
        clock.now = fakes::At(2026, 11, 21, 14, 0, 0);
        Html();
        mail.sendErrors = {Lost};
        Poll();
        WaitMinutes(minutes);
        Poll();
        EXPECT_EQ(Minutes(), (Numbers{0, minutes})) << minutes;
    }
}

TEST_F(Attempts, FormerRunOfTheItemIsForgotten) {
    std::ofstream(File()) << "schedule\t1\t2026-11-20\t00:00\t1795190000\tend\n"
                             "package\t1\t2026-11-20\t00:00\t1795190000\tend\n";
    StartAgain();
    Html();
    Poll();
    std::ostringstream text;
    text << std::ifstream(File()).rdbuf();
    EXPECT_EQ(text.str(), "package\t1\t2026-11-20\t00:00\t1795190000\tend\n");
}

TEST_F(Attempts, LinesThatAreCutOffOrNotUnderstoodGiveNoDate) {
    Html();
    std::ofstream(File()) << "schedule\t1\t2026-11-21\t00:00\tabc\tend\nschedule\t1\t2026-11-21\t00:00\t1795";
    StartAgain();
    Poll();
    ASSERT_EQ(mail.dates.size(), 1U);
    EXPECT_LE(TheClock().Moment().seconds - mail.dates[0]->seconds, 5);
    EXPECT_FALSE(IsKept());
}

}  // namespace
