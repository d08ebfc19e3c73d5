// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ParameterRows.h"

#include <gtest/gtest.h>

#include "shared/Global.h"
#include "support/database.h"
#include "support/fakes.h"

namespace {

using Texts = std::vector<std::string>;
using Boxes = std::vector<fakes::Box>;

const char* const Path = "Z:\\reports\\sales.rpt";
const char* const Stored = "select ReportID, ParName, ParValue from ReportParameter";

class ParameterRows : public testing::Test {
 protected:
    void TearDown() override {
        Global::ParNames.clear();
        Global::ParValues.clear();
    }
    void OpenReportOf(int fields) {
        engine.reports[Path] = {};
        engine.reports[Path].parameterTypes.assign(static_cast<std::size_t>(fields), report::StringField);
        Global::OpenReport(Path);
    }
    void Schedule(int key) {
        database.Run("insert into ReportScheduler(ReportID) values(" + std::to_string(key) + ")");
    }
    static std::string Line(int n) { return "line " + std::to_string(n); }
    // A list with one line.
    static std::string OnlyLine(int n) {
        if (n > 1) {
            throw RuntimeError(35600, "Index out of bounds");
        }
        return "only";
    }

    fakes::TestDatabase database;
    fakes::FakeEngine engine;
    fakes::FakePrompts prompts;
};

}  // namespace

TEST_F(ParameterRows, AreAddedToTheNewestSchedule) {
    Schedule(3);
    Schedule(8);
    Global::ParNames = {"", "Region", "Year"};
    Global::ParValues = {"", "West", "2026"};
    Global::AddParameterRows(2);
    EXPECT_EQ(database.TakeStatements(),
              (Texts{"select max(ReportID) from reportscheduler",
                     "insert into ReportParameter(ReportID, ParName, ParValue) Values(8,'Region','West')",
                     "insert into ReportParameter(ReportID, ParName, ParValue) Values(8,'Year','2026')"}));
    EXPECT_EQ(database.Rows(Stored), (Texts{"8|Region|West", "8|Year|2026"}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ParameterRows, GoToAnotherProcessesScheduleWhenItsKeyIsHigher) {
    Schedule(3);  // the caller's schedule
    Schedule(4);  // one of another process, in between
    Global::ParNames = {"", "Region"};
    Global::ParValues = {"", "West"};
    Global::AddParameterRows(1);
    EXPECT_EQ(database.Rows(Stored), Texts{"4|Region|West"});
}

TEST_F(ParameterRows, NoneAreAddedForAReportWithoutParameters) {
    Schedule(3);
    Global::AddParameterRows(0);
    EXPECT_EQ(database.TakeStatements(), Texts{"select max(ReportID) from reportscheduler"});
    EXPECT_TRUE(database.Rows(Stored).empty());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ParameterRows, ListThatIsTooShortEndsInTheBoxAndKeepsWhatIsStored) {
    Schedule(3);
    Global::ParNames = {"", "Region"};
    Global::ParValues = {"", "West"};
    Global::AddParameterRows(2);
    EXPECT_EQ(prompts.boxes, (Boxes{{"Oxbow Courier encountred an error. Subscript out of range [9]",
                                     vbExclamation, "Oxbow Courier"}}));
    EXPECT_EQ(database.Rows(Stored), Texts{"3|Region|West"});
}

TEST_F(ParameterRows, QuoteInANameBreaksTheStatement) {
    Schedule(3);
    Global::ParNames = {"", "Owner's"};
    Global::ParValues = {"", "Ann"};
    Global::AddParameterRows(1);
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_NE(prompts.boxes[0].text.find("[-2147217900]"), std::string::npos) << prompts.boxes[0].text;
    EXPECT_TRUE(database.Rows(Stored).empty());
}

TEST_F(ParameterRows, AreReplacedByNamesOfTheReportAndValuesOfTheLines) {
    OpenReportOf(2);
    database.Run("insert into ReportParameter values(7,'Old','old'),(8,'Other','kept')");
    EXPECT_TRUE(Global::ReplaceParameterRows("7", Line));
    EXPECT_EQ(database.TakeStatements(),
              (Texts{"delete from reportparameter where reportid = 7",
                     "insert into reportparameter(ReportID, ParName, ParValue) values(7,'P1','line 1')",
                     "insert into reportparameter(ReportID, ParName, ParValue) values(7,'P2','line 2')"}));
    EXPECT_EQ(database.Rows(Stored), (Texts{"8|Other|kept", "7|P1|line 1", "7|P2|line 2"}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ParameterRows, StayAsTheyAreForAReportWithoutParameters) {
    OpenReportOf(0);
    database.Run("insert into ReportParameter values(7,'Old','old')");
    EXPECT_TRUE(Global::ReplaceParameterRows("7", OnlyLine));
    EXPECT_EQ(database.TakeStatements(), Texts{});
    EXPECT_EQ(database.Rows(Stored), Texts{"7|Old|old"});
}

TEST_F(ParameterRows, FewerLinesThanParametersLoseTheOldRowsAndShowTheBox) {
    OpenReportOf(2);
    database.Run("insert into ReportParameter values(7,'Old','old')");
    EXPECT_FALSE(Global::ReplaceParameterRows("7", OnlyLine));
    EXPECT_EQ(prompts.boxes, (Boxes{{"Oxbow Courier encountred an error. Index out of bounds [35600]",
                                     vbExclamation, "Oxbow Courier"}}));
    EXPECT_EQ(database.Rows(Stored), Texts{"7|P1|only"});
}

TEST_F(ParameterRows, CannotBeReplacedWithoutAnOpenReport) {
    database.Run("insert into ReportParameter values(7,'Old','old')");
    EXPECT_FALSE(Global::ReplaceParameterRows("7", Line));
    EXPECT_EQ(
        prompts.boxes,
        (Boxes{{"Oxbow Courier encountred an error. Object variable or With block variable not set [91]",
                vbExclamation, "Oxbow Courier"}}));
    EXPECT_EQ(database.Rows(Stored), Texts{"7|Old|old"});
}
