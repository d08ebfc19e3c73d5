// SPDX-License-Identifier: GPL-3.0-or-later
// A run that cannot be recorded does not start. A delivered run is recorded, however long that takes, and not
// mailed again.
#include "scheduler/Deliveries.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>

#include "platform/base/paths.h"
#include "platform/contracts/process.h"
#include "scheduler/BatchReport.h"
#include "scheduler/Schedchk.h"
#include "support/raises.h"
#include "support/run_fixture.h"
#include "support/team_store.h"
#include "support/watched_log.h"

namespace {

using Rows = std::vector<std::string>;

class DeliveryRecords : public fakes::PackageRunFixture {
 protected:
    DeliveryRecords() : PackageRunFixture(fakes::At(2026, 11, 21, 14, 0, 0)) {
        SetRegional({});
        SetCommand("-sched");
        engine.reports["Z:\\reports\\sales.rpt"] = {};
        ADODB::SetBusyWait(0.01);
    }
    ~DeliveryRecords() override {
        ADODB::SetBusyWait(0);
        SetCommand({});
    }
    void Schedule() { fakes::Insert(database, {.nextRun = "2026-11-21"}); }
    std::filesystem::path LiveFile() const { return database.Folder() / "PressroomLive.dat"; }
    void Take() {
        if (holder == nullptr) {
            holder = database.Hold();
        }
    }
    bool IsKept() const { return std::filesystem::exists(database.Folder() / "PressroomLive.delivered"); }
    // What a process knows that starts now.
    static void StartAgain() {
        const std::string app = AppPath();
        SetAppPath("Z:\\nowhere");
        Global::Deliveries::Instance();
        SetAppPath(app);
    }
    // Keeps the database busy from the end of the next export.
    void HoldAfterTheExport() {
        engine.onExport = [this](const std::string&) { Take(); };
    }
    void ReleaseAtYield(int yield) {
        loop.onYield = [this, yield, count = 0]() mutable {
            if (++count == yield) {
                holder.reset();
            }
        };
    }
    std::size_t Exports() const { return CallsWith("export").size(); }
    Rows NextDates() const {
        return database.Rows(
            "select NextRun from ReportScheduler union all select NextRunDate from ReportBatch");
    }
    Rows ScheduleHistory() const {
        return database.Rows("select ReportID, LastRun, Status, ErrMsg from ReportHistory");
    }

    std::shared_ptr<void> holder;  // another program that keeps the database busy
};

// Returns what the body writes to standard error.
template <typename Body>
std::string Said(Body body) {
    testing::internal::CaptureStderr();
    body();
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST_F(DeliveryRecords, NothingRunsWhileTheDatabaseStaysBusy) {
    Schedule();
    Package("F");
    Detail(1, "1>a.rpt", "Acrobat");
    Take();
    Said([] {
        EXPECT_THROW(Global::Schedchk(), RuntimeError);
        EXPECT_THROW(Global::BatchReport(), RuntimeError);
    });
    EXPECT_EQ(Exports(), 0U);
    EXPECT_TRUE(CallsWith("open").empty());
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_FALSE(frame.timerEnabled);
    EXPECT_FALSE(IsKept());
}

TEST_F(DeliveryRecords, PollOfABusyDatabaseFailsWithItsRowOnceItIsFree) {
    Schedule();
    Take();
    ReleaseAtYield(3);
    const std::string said = Said([] { Global::Schedchk(); });
    const std::string reason = database.BusyText();
    EXPECT_EQ(ScheduleHistory(), Rows{"1|2026-11-21 14:00:00|Failure|" + reason});
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in Schedchk. " + reason + " [-2147217871]");
    EXPECT_EQ(Exports(), 0U);
    EXPECT_TRUE(frame.timerEnabled);
    const std::string line = "2026-11-21 14:00:00 The scheduler waits for its database. " + reason + "\n";
    EXPECT_EQ(said, line);
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1U);
    EXPECT_EQ(NextDates(), Rows{"2026-11-22"});
}

TEST_F(DeliveryRecords, DatabaseThatCannotEvenBeReadIsCalledBusyAndNotAMistakeOfAStatement) {
    sqlite3* locked = nullptr;
    ASSERT_EQ(sqlite3_open(LiveFile().c_str(), &locked), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(locked, "pragma locking_mode=exclusive; begin exclusive; delete from clients",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    loop.onYield = [&] {
        sqlite3_close(locked);
        locked = nullptr;
    };
    int number = 0;
    Said([&] { number = NumberRaisedBy([] { Global::Schedchk(); }); });
    EXPECT_EQ(number, err::DataTimeout);
    EXPECT_EQ(locked, nullptr);
}

TEST_F(DeliveryRecords, BusyDatabaseIsWaitedForOnceTheMailIsOut) {
    Schedule();
    HoldAfterTheExport();
    ReleaseAtYield(20);
    Said([] { Global::Schedchk(); });
    EXPECT_EQ(Exports(), 1U);
    EXPECT_EQ(NextDates(), Rows{"2026-11-22"});
    EXPECT_EQ(ScheduleHistory(), Rows{"1|2026-11-21 14:00:00|Success|None"});
    EXPECT_TRUE(mail.sent.empty());  // no alert
    EXPECT_TRUE(frame.timerEnabled);
    EXPECT_FALSE(IsKept());
}

TEST_F(DeliveryRecords, BusyDatabaseIsWaitedForOnceAPackageIsOut) {
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    HoldAfterTheExport();
    ReleaseAtYield(20);
    Said([] { Global::BatchReport(); });
    EXPECT_EQ(NextDates(), Rows{"2026-11-22"});
    EXPECT_EQ(History(), Rows{"1|2026-11-21,14:00:00|T|null"});
    EXPECT_EQ(mail.sent.size(), 1U);
}

TEST_F(DeliveryRecords, ScheduleThatCouldNotBeRecordedIsRecordedByTheNextPollAndNotMailedAgain) {
    Schedule();
    HoldAfterTheExport();
    const std::string said = Said([] { EXPECT_THROW(Global::Schedchk(), RuntimeError); });
    EXPECT_NE(
        said.find(
            "2026-11-21 14:00:00 An error occured in Schedchk, and its history row cannot be written. " +
            database.BusyText()),
        std::string::npos)
        << said;
    EXPECT_TRUE(IsKept());
    holder.reset();
    clock.now = fakes::At(2026, 11, 21, 14, 5, 0);
    database.TakeStatements();
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1U);
    EXPECT_EQ(NextDates(), Rows{"2026-11-22"});
    EXPECT_EQ(ScheduleHistory(), Rows{"1|2026-11-21 14:00:00|Success|None"});
    EXPECT_EQ(
        database.TakeStatements(),
        (Rows{"Select * from ReportScheduler Where StartDate <= '2026-11-21' and EndDate >= '2026-11-21'",
              "update ReportScheduler set NextRun = '2026-11-22' Where ReportID = 1",
              "insert into ReportHistory(ReportID, LastRun, Status, ErrMsg) values(1,'2026-11-21 "
              "14:00:00','Success','None')"}));
    EXPECT_FALSE(IsKept());
}

TEST_F(DeliveryRecords, RestartRecordsWhatTheFormerProcessDelivered) {
    Schedule();
    Package();
    Detail(1, "1>a.rpt", "Acrobat");
    HoldAfterTheExport();
    Said([] {
        EXPECT_THROW(Global::Schedchk(), RuntimeError);
        EXPECT_THROW(Global::BatchReport(), RuntimeError);
    });
    // Packages were not run: the database was already busy.
    EXPECT_EQ(Exports(), 1U);
    holder.reset();
    StartAgain();
    ReleaseAtYield(1);
    engine.onExport = [this](const std::string& file) {
        if (file != "mail") {
            Take();
        }
    };
    Said([] { Global::Schedchk(); });
    ReleaseAtYield(1000);
    Said([] { EXPECT_THROW(Global::BatchReport(), RuntimeError); });
    EXPECT_EQ(Exports(), 2U);
    EXPECT_EQ(mail.sent.size(), 1U);
    holder.reset();
    StartAgain();
    Global::BatchReport();
    Global::Schedchk();
    EXPECT_EQ(Exports(), 2U);
    EXPECT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(NextDates(), (Rows{"2026-11-22", "2026-11-22"}));
    EXPECT_EQ(ScheduleHistory(), Rows{"1|2026-11-21 14:00:00|Success|None"});
    EXPECT_EQ(History(), Rows{"1|2026-11-21,14:00:00|T|null"});
    EXPECT_FALSE(IsKept());
}

TEST_F(DeliveryRecords, DateThatTheTableRefusesIsTriedAgainInsteadOfTheMail) {
    Schedule();
    Package();
    database.Run("create trigger A before update on ReportScheduler begin select raise(abort, 'held'); end");
    database.Run("create trigger B before update on ReportBatch begin select raise(abort, 'held'); end");
    for (int poll = 0; poll < 3; ++poll) {
        Global::BatchReport();
        Global::Schedchk();
    }
    EXPECT_EQ(Exports(), 1U);
    ASSERT_EQ(mail.sent.size(), 7U);  // the package, and two alerts for each poll
    EXPECT_EQ(mail.sent[0].subject, "Subject");
    for (std::size_t alert = 1; alert < mail.sent.size(); ++alert) {
        EXPECT_EQ(mail.sent[alert].subject, "Pressroom Error");
    }
    EXPECT_TRUE(IsKept());
    database.Run("drop trigger A; drop trigger B; delete from ReportHistory; delete from ReportBatchHstry");
    Global::BatchReport();
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1U);
    EXPECT_EQ(mail.sent.size(), 7U);
    EXPECT_EQ(NextDates(), (Rows{"2026-11-22", "2026-11-22"}));
    EXPECT_EQ(ScheduleHistory(), Rows{"1|2026-11-21 14:00:00|Success|None"});
    EXPECT_EQ(History(), Rows{"1|2026-11-21,14:00:00|T|null"});
}

TEST_F(DeliveryRecords, RowsAfterOneThatIsRecordedAgainAreRun) {
    Schedule();
    Schedule();
    database.Run(
        "create trigger A before update on ReportScheduler when new.ReportID = 1 begin select raise(abort, "
        "'held'); "
        "end");
    Global::Schedchk();
    database.Run("drop trigger A");
    Global::Schedchk();
    EXPECT_EQ(Exports(), 2U);
    EXPECT_EQ(NextDates(), (Rows{"2026-11-22", "2026-11-22"}));
}

TEST_F(DeliveryRecords, HistoryRowThatTheTableRefusesDoesNotHoldBackTheDate) {
    Schedule();
    Package();
    database.Run(
        "create trigger A before insert on ReportHistory when new.Status = 'Success' begin select "
        "raise(abort, "
        "'held'); end");
    database.Run(
        "create trigger B before insert on ReportBatchHstry when new.ErrMsg is null begin select "
        "raise(abort, "
        "'held'); end");
    for (int poll = 0; poll < 2; ++poll) {
        Global::BatchReport();
        Global::Schedchk();
    }
    EXPECT_EQ(Exports(), 1U);
    EXPECT_EQ(NextDates(), (Rows{"2026-11-22", "2026-11-22"}));
    EXPECT_EQ(ScheduleHistory(),
              Rows{"1|2026-11-21 14:00:00|Failure|The row breaks a rule of its table; held"});
    EXPECT_EQ(History(), Rows{"1|2026-11-21,14:00:00|T|The row breaks a rule of its table; held"});
    EXPECT_FALSE(IsKept());
}

TEST_F(DeliveryRecords, OthersSeeDateAndHistoryRowAtOnce) {
    Schedule();
    Package();
    Rows seen;
    ADODB::SetStatementTrace([&](const std::string& statement) {
        if (statement.rfind("insert into", 0) == 0) {
            seen.push_back(NextDates().at(seen.size()));
        }
    });
    Global::Schedchk();
    Global::BatchReport();
    EXPECT_EQ(seen, (Rows{"2026-11-21", "2026-11-21"}));
    EXPECT_EQ(NextDates(), (Rows{"2026-11-22", "2026-11-22"}));
}

TEST_F(DeliveryRecords, RunAtAnotherTimeIsAnotherRun) {
    for (const char* change : {"RunAt = '13:59'", "NextRun = '2026-11-20'"}) {
        database.Run("delete from ReportScheduler");
        engine.calls.clear();
        Schedule();
        database.Run(
            "create trigger A before update on ReportScheduler begin select raise(abort, 'held'); end");
        Global::Schedchk();
        database.Run("drop trigger A; update ReportScheduler set " + std::string(change));
        EXPECT_TRUE(IsKept());
        Global::Schedchk();
        EXPECT_EQ(Exports(), 2U) << change;
        EXPECT_FALSE(IsKept());
    }
}

TEST_F(DeliveryRecords, RunThatIsNotRecordedStaysClaimedOverAServer) {
    Schedule();
    Package("F");
    database.Run("create trigger A before update on ReportScheduler begin select raise(abort, 'held'); end");
    Global::Schedchk();
    Global::BatchReport();
    EXPECT_EQ(ADODB::HeldClaims(Global::ConnectionString).size(), fakes::TestsUseServer() ? 1U : 0U);
    database.Run("drop trigger A");
    Global::Schedchk();
    EXPECT_TRUE(ADODB::HeldClaims(Global::ConnectionString).empty());
    EXPECT_EQ(Exports(), 1U);
}

TEST_F(DeliveryRecords, DeliveryOfAnItemThatIsGoneIsForgotten) {
    Schedule();
    Package();
    database.Run("create trigger A before update on ReportScheduler begin select raise(abort, 'held'); end");
    database.Run("create trigger B before update on ReportBatch begin select raise(abort, 'held'); end");
    Global::Schedchk();
    Global::BatchReport();
    database.Run("delete from ReportScheduler; delete from ReportBatch");
    Global::Schedchk();
    EXPECT_TRUE(IsKept());  // the package's delivery
    Global::BatchReport();
    EXPECT_FALSE(IsKept());
}

TEST_F(DeliveryRecords, LinesThatAreCutOffOrNotUnderstoodSuppressNoRun) {
    Schedule();
    std::ofstream(database.Folder() / "PressroomLive.delivered")
        << "schedule\t1\t2026-11-21\t00:00\t2026-11-22\t2026-11-21 "
           "14:00:00\nreport\t1\t2026-11-21\t00:00\t2026-11-22\t"
           "2026-11-21 14:00:00\tend\n\n\t\t\nschedule\t1\t2026-11-2";
    StartAgain();
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1U);
}

TEST_F(DeliveryRecords, NextDateOfARecordedRowIsWhatAnUnknownWordAfterItTakes) {
    fakes::Insert(database, {.nextRun = "2026-11-20"});
    fakes::Insert(database, {.frequency = "WeekDays", .nextRun = "2026-11-02"});
    std::ofstream(database.Folder() / "PressroomLive.delivered")
        << "schedule\t1\t2026-11-20\t00:00\t2026-11-21\t2026-11-21 13:00:00\tend\n";
    StartAgain();
    Global::Schedchk();
    EXPECT_EQ(Exports(), 1U);
    EXPECT_EQ(NextDates(), (Rows{"2026-11-21", "2026-11-21"}));
}

TEST_F(DeliveryRecords, NothingRunsOnADiskWithHardlyAnyRoom) {
    Schedule();
    Package();
    WatchedLog log;
    log.fullAt = 36 * 1024;
    Global::Schedchk();
    Global::BatchReport();
    EXPECT_EQ(Exports(), 0U);
    EXPECT_EQ(NextDates(), (Rows{"2026-11-21", "2026-11-21"}));
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in Schedchk. The disk is full: the data file \"" +
                                     paths::ForUser(AppPath()) +
                                     "/PressroomLive.dat\" cannot be written [61]");
}

TEST_F(DeliveryRecords, DiskThatFillsUpDuringARunDoesNotCostItsRecord) {
    Schedule();
    Package("F");
    Detail(1, "1>a.rpt", "Acrobat");
    WatchedLog log;
    engine.onExport = [&log](const std::string&) { log.fullAt = log.length; };
    Global::Schedchk();
    EXPECT_EQ(NextDates(), (Rows{"2026-11-22", "2026-11-21"}));
    EXPECT_EQ(ScheduleHistory(), Rows{"1|2026-11-21 14:00:00|Success|None"});
    EXPECT_TRUE(mail.sent.empty());
}
