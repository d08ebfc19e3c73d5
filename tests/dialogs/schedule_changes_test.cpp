// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "dialogs/ScheduleRecords.h"
#include "support/database.h"
#include "support/fakes.h"
#include "support/raises.h"

namespace {

using Texts = std::vector<std::string>;
using Boxes = std::vector<fakes::Box>;

class ScheduleChanges : public testing::Test {
 protected:
    ScheduleChanges() {
        fakes::Insert(database, {});
        fakes::Insert(database, {.title = "Stock"});
    }
    void ExpectTypeMismatchAndNoStatement(const Global::ScheduleChange& incomplete) {
        EXPECT_FALSE(Global::UpdateSchedule("1", incomplete));
        EXPECT_EQ(prompts.boxes, (Boxes{{"Oxbow Courier encountred an error. Type mismatch [13]",
                                         vbExclamation, "Oxbow Courier"}}));
        EXPECT_EQ(database.TakeStatements(), Texts{});
        EXPECT_EQ(database.Rows("select ReportTitle from ReportScheduler"), (Texts{"Sales", "Stock"}));
    }

    Global::ScheduleChange change{.title = "New",
                                  .sendTo = "bob;",
                                  .subject = "News",
                                  .message = "Read",
                                  .runAt = "07:30",
                                  .frequency = "Weekly",
                                  .format = "MS Excel",
                                  .selectionForm = "{a} = 1",
                                  .parent = "Asia",
                                  .loginReq = "T",
                                  .userName = "scott",
                                  .password = "tiger"};
    fakes::TestDatabase database;
    fakes::FakePrompts prompts;
};

}  // namespace

TEST_F(ScheduleChanges, AreOneStatement) {
    EXPECT_TRUE(Global::UpdateSchedule("1", change));
    EXPECT_EQ(database.TakeStatements(),
              Texts{"update reportscheduler set ReportTitle = 'New', SendTo = 'bob;', Subject = 'News', "
                    "Message = 'Read', RunAt = '07:30', Frequency = 'Weekly', Format = 'MS Excel', "
                    "SelectionForm = '{a} = 1',Parent = 'Asia',UserName = 'scott',[Password] = "
                    "'tiger',LoginReq = 'T' where ReportID = 1"});
    EXPECT_EQ(database.Rows("select ReportTitle, SendTo, Subject, Message, RunAt, Frequency, Format, "
                            "SelectionForm, Parent, UserName, Password, LoginReq from ReportScheduler "
                            "where ReportID = 1"),
              Texts{"New|bob;|News|Read|07:30|Weekly|MS Excel|{a} = 1|Asia|scott|tiger|T"});
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ScheduleChanges, LeaveDatesNextRunAndPathsAndOtherSchedules) {
    EXPECT_TRUE(Global::UpdateSchedule("1", change));
    EXPECT_EQ(database.Rows("select StartDate, EndDate, NextRun, ReportPath from ReportScheduler "
                            "where ReportID = 1"),
              Texts{"2000-01-01|3000-12-31|2002-03-07|Z:\\reports\\sales.rpt"});
    EXPECT_EQ(database.Rows("select ReportTitle from ReportScheduler"), (Texts{"New", "Stock"}));
}

TEST_F(ScheduleChanges, WithoutUserAndPasswordEndInATypeMismatch) {
    change.userName.reset();
    change.password.reset();
    ExpectTypeMismatchAndNoStatement(change);
}

TEST_F(ScheduleChanges, WithoutAPasswordEndInATypeMismatch) {
    change.password.reset();
    ExpectTypeMismatchAndNoStatement(change);
}

TEST_F(ScheduleChanges, EmptyUserAndPasswordAreStored) {
    change.userName = "";
    change.password = "";
    EXPECT_TRUE(Global::UpdateSchedule("1", change));
    EXPECT_EQ(database.Rows("select UserName, Password from ReportScheduler where ReportID = 1"), Texts{"|"});
}

TEST_F(ScheduleChanges, QuoteInAValueBreaksTheStatementAndShowsTheBox) {
    change.parent = "O'Brien";
    EXPECT_FALSE(Global::UpdateSchedule("1", change));
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text.rfind("Oxbow Courier encountred an error. ", 0), 0U);
    EXPECT_NE(prompts.boxes[0].text.find(" [-2147217900]"), std::string::npos) << prompts.boxes[0].text;
    EXPECT_EQ(database.Rows("select ReportTitle from ReportScheduler"), (Texts{"Sales", "Stock"}));
}

TEST_F(ScheduleChanges, DeletionTakesValuesAndHistoryAlong) {
    database.Run(
        "insert into ReportParameter values(1,'P','a'),(2,'P','b');"
        "insert into ReportHistory(ReportID,LastRun) values(1,'2026-11-20 07:00:00'),"
        "(2,'2026-11-20 08:00:00')");
    Global::DeleteSchedule("1");
    EXPECT_EQ(database.TakeStatements(), (Texts{"delete from reportscheduler where ReportID = 1",
                                                "delete from reportparameter where reportID = 1",
                                                "delete from reporthistory where ReportID = 1"}));
    EXPECT_EQ(database.Rows("select ReportTitle from ReportScheduler"), Texts{"Stock"});
    EXPECT_EQ(database.Rows("select ReportID from ReportParameter"), Texts{"2"});
    EXPECT_EQ(database.Rows("select ReportID from ReportHistory"), Texts{"2"});
}

TEST_F(ScheduleChanges, FailedDeletionIsTheCallersErrorAndWhatIsGoneStaysGone) {
    database.Run("drop table ReportParameter");
    EXPECT_EQ(NumberRaisedBy([] { Global::DeleteSchedule("1"); }), err::DataTableMissing);
    EXPECT_EQ(database.Rows("select ReportTitle from ReportScheduler"), Texts{"Stock"});
    EXPECT_TRUE(prompts.boxes.empty());
}
