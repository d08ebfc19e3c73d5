// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/PreviewCommands.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include "execution/frmTest.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/mdi_frame.h"
#include "support/raises.h"

namespace {

using Texts = std::vector<std::string>;

const char* const Path = "Z:\\srv\\sales.rpt";

// Package 3 holds report 5, Sales; it is selected in the current Desktop window.
class PreviewCommands : public testing::Test {
 protected:
    void SetUp() override {
        database.Run(
            "insert into ReportBatchDtls(DetailID,ReportID,ReportTitle,ReportPath,UserName,Password) "
            "values(5,3,'1>sales.rpt','Z:\\srv\\sales.rpt','scott','tiger'),"
            "(6,3,'2>stock.rpt','Z:\\srv\\stock.rpt',null,null)");
        engine.reports[Path] = {};
        Global::DeskWindows = {nullptr, &desk};
        Global::DeskIndex = 1;
        desk.selected = {"1>sales.rpt", "5:Z:\\srv\\sales.rpt"};
    }
    void TearDown() override {
        Global::DeskWindows.clear();
        Global::DeskIndex = 0;
    }
    void Fields(std::vector<int> types) { engine.reports[Path].parameterTypes = std::move(types); }
    void Value(int detail, const std::string& value) {
        database.Run("insert into ReportBatchPar(ReportID,DetailID,ParValue) values(3," +
                     std::to_string(detail) + "," + value + ")");
    }
    bool IsShown() const { return !frame.Shown<frmTest>().empty(); }
    // Returns the engine's calls up to the run for the screen.
    Texts Preparations() const {
        return {engine.calls.begin(), std::find(engine.calls.begin(), engine.calls.end(), "open pages")};
    }

    fakes::FakeClock clock{fakes::At(2026, 11, 21)};
    fakes::FakeLoop loop{clock};
    fakes::TestDatabase database;
    fakes::FakeEngine engine;
    fakes::FakePrompts prompts;
    fakes::MdiFrame frame;
    fakes::FakeDesk desk;
};

}  // namespace

TEST_F(PreviewCommands, ReportOfAPackageIsShownWithItsStoredValues) {
    Fields({12, 7});
    Value(6, "'of another report'");
    Value(5, "'West'");
    Value(5, "'12.5'");
    mnubtcRun_Click();
    EXPECT_EQ(
        database.TakeStatements(),
        Texts{"select r.DetailID, ReportPath, ParValue, UserName, Password From ReportBatchDtls r  left "
              "outer join ReportBatchPar x on r.ReportID = x.ReportID and  r.DetailID = x.DetailID "
              "Where r.DetailID = 5 and Reporttitle = '1>sales.rpt' order by parid"});
    EXPECT_EQ(Preparations(),
              (Texts{"open " + std::string(Path), "value 1 text West", "value 2 double 12.5"}));
    EXPECT_TRUE(IsShown());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PreviewCommands, HourglassStandsWhileTheReportIsOpenedAndWhileItRuns) {
    mnubtcRun_Click();
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0, 11, 0}));
    EXPECT_EQ(desk.pointers, (std::vector<int>{11, 0, 11, 0}));
}

TEST_F(PreviewCommands, ReportWithoutParametersLeavesTheEmptyValueUnused) {
    mnubtcRun_Click();
    EXPECT_EQ(Preparations(), Texts{"open " + std::string(Path)});
    EXPECT_TRUE(IsShown());
}

TEST_F(PreviewCommands, OtherKindOfFieldGetsTheStoredValueAsItIs) {
    Fields({22, 10, 12});
    Value(5, "'a,b'");
    Value(5, "'passed over'");
    Value(5, "'last'");
    mnubtcRun_Click();
    EXPECT_EQ(Preparations(), (Texts{"open " + std::string(Path), "value 1 field a,b", "value 3 text last"}));
}

TEST_F(PreviewCommands, RowsAfterTheLastFieldAreLeft) {
    Fields({12});
    Value(5, "'West'");
    Value(5, "'behind'");
    mnubtcRun_Click();
    EXPECT_EQ(Preparations(), (Texts{"open " + std::string(Path), "value 1 text West"}));
    EXPECT_TRUE(IsShown());
}

TEST_F(PreviewCommands, MoreFieldsThanRowsFail) {
    Fields({12, 12});
    Value(5, "'West'");
    EXPECT_EQ(NumberRaisedBy(mnubtcRun_Click), err::NoCurrentRecord);
    EXPECT_FALSE(IsShown());
}

TEST_F(PreviewCommands, ValueThatIsNoNumberFails) {
    Fields({7});
    Value(5, "'abc'");
    EXPECT_EQ(NumberRaisedBy(mnubtcRun_Click), err::TypeMismatch);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PreviewCommands, QuoteInATitleBreaksTheStatement) {
    desk.selected = {"1>ann's.rpt", "5:Z:\\srv\\ann's.rpt"};
    EXPECT_EQ(NumberRaisedBy(mnubtcRun_Click), err::DataSyntax);
    EXPECT_TRUE(engine.calls.empty());
}

TEST_F(PreviewCommands, ReportThatIsNoLongerStoredFailsAsAMissingFile) {
    desk.selected = {"gone", "9:gone"};
    EXPECT_EQ(NumberRaisedBy(mnubtcRun_Click), err::FileNotFound);
    EXPECT_EQ(engine.calls, Texts{"open "});
    EXPECT_FALSE(IsShown());
}

TEST_F(PreviewCommands, ErrorEndsTheProcessWithTheRunTimesBox) {
    fakes::FakeProcess process;
    engine.reports.clear();
    QTimer::singleShot(0, mnubtcRun_Click);
    QCoreApplication::processEvents();
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{{"Run-time error \"53\":\n\nFile not found: " + std::string(Path),
                                        vbCritical, "Oxbow Courier"}}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
}

TEST_F(PreviewCommands, NothingSelectedFails) {
    desk.selected.reset();
    EXPECT_EQ(NumberRaisedBy(mnubtcRun_Click), err::ObjectNotSet);
}

TEST_F(PreviewCommands, WithoutADesktopWindowBothFail) {
    Global::DeskIndex = 2;
    EXPECT_EQ(NumberRaisedBy(mnubtcRun_Click), err::SubscriptOutOfRange);
    EXPECT_EQ(NumberRaisedBy(mnuDeskView_Click), err::SubscriptOutOfRange);
    Global::DeskWindows = {nullptr, nullptr};
    Global::DeskIndex = 1;
    EXPECT_EQ(NumberRaisedBy(mnuDeskView_Click), err::ObjectNotSet);
}

TEST_F(PreviewCommands, RunReportOfTheDesktopIsCommand6) {
    mnuDeskView_Click();
    EXPECT_EQ(desk.commands, std::vector<int>{6});
}
