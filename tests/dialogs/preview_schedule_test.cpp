// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/PreviewSchedule.h"

#include <gtest/gtest.h>

#include "execution/frmTest.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/mdi_frame.h"

namespace {

using Texts = std::vector<std::string>;
using Boxes = std::vector<fakes::Box>;

const char* const Path = "Z:\\reports\\sales.rpt";

class PreviewSchedule : public testing::Test {
 protected:
    void SetUp() override { engine.reports[Path] = {}; }
    void Fields(std::vector<int> types) { engine.reports[Path].parameterTypes = std::move(types); }
    void Value(const std::string& value) {
        database.Run("insert into ReportParameter values(1, 'P', " + value + ")");
    }
    bool IsShown() const { return !frame.Shown<frmTest>().empty(); }
    // Returns the engine's calls up to the run for the screen.
    Texts Preparations() const {
        return {engine.calls.begin(), std::find(engine.calls.begin(), engine.calls.end(), "open pages")};
    }
    void ExpectBoxInsteadOfThePreview(const std::string& failure) {
        EXPECT_EQ(prompts.boxes,
                  (Boxes{{"Oxbow Courier encountred an error. " + failure, vbExclamation, "Oxbow Courier"}}));
        EXPECT_FALSE(IsShown());
        ASSERT_FALSE(frame.pointers.empty());
        EXPECT_EQ(frame.pointers.back(), 0);
    }

    fakes::FakeClock clock{fakes::At(2026, 11, 21)};
    fakes::FakeLoop loop{clock};
    fakes::TestDatabase database;
    fakes::FakeEngine engine;
    fakes::FakePrompts prompts;
    fakes::MdiFrame frame;
};

}  // namespace

TEST_F(PreviewSchedule, ShowsTheReportAsItWouldRun) {
    fakes::Insert(database,
                  {.formula = "{a} = 1", .userName = "scott", .password = "tiger", .loginReq = "T"});
    engine.reports[Path].tables = 2;
    Fields({12, 7, 9, 16});
    Value("'West'");
    Value("'12.5'");
    Value("'True'");
    Value("'2026-11-21'");
    Global::PreviewSchedule("1");
    EXPECT_EQ(database.TakeStatements(),
              Texts{"select * from reportscheduler r left outer join reportparameter x  on r.reportid = "
                    "x.reportid where r.reportid = 1"});
    EXPECT_EQ(Preparations(),
              (Texts{"open " + std::string(Path), "logon 1 [][][scott][tiger]", "logon 2 [][][scott][tiger]",
                     "formula {a} = 1", "value 1 text West", "value 2 double 12.5", "value 3 boolean True",
                     "value 4 date 2026-11-21 00:00:00"}));
    EXPECT_TRUE(IsShown());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PreviewSchedule, HourglassGoesWhenTheWindowIsShown) {
    fakes::Insert(database, {});
    Global::PreviewSchedule(1);
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 11, 0, 0}));
}

TEST_F(PreviewSchedule, LogsOnWithAnEmptyPasswordAsWell) {
    fakes::Insert(database, {.userName = "scott", .loginReq = "T"});
    Global::PreviewSchedule("1");
    EXPECT_EQ(Preparations(), (Texts{"open " + std::string(Path), "logon 1 [][][scott][]", "formula "}));
}

TEST_F(PreviewSchedule, ReportWithoutParametersLeavesStoredValues) {
    fakes::Insert(database, {});
    Value("'left'");
    Global::PreviewSchedule("1");
    EXPECT_EQ(Preparations(), (Texts{"open " + std::string(Path), "formula "}));
    EXPECT_TRUE(IsShown());
}

TEST_F(PreviewSchedule, FewerValuesThanParametersLeaveTheOthersWithout) {
    fakes::Insert(database, {});
    Fields({12, 12});
    Value("'West'");
    Global::PreviewSchedule("1");
    EXPECT_EQ(Preparations(), (Texts{"open " + std::string(Path), "formula ", "value 1 text West"}));
    EXPECT_TRUE(IsShown());
}

TEST_F(PreviewSchedule, ValueOfAnotherTypeIsPassedOver) {
    fakes::Insert(database, {});
    Fields({10, 12});
    Value("'passed over'");
    Value("'West'");
    Global::PreviewSchedule("1");
    EXPECT_EQ(Preparations(), (Texts{"open " + std::string(Path), "formula ", "value 2 text West"}));
}

TEST_F(PreviewSchedule, OtherKindOfParameterEndsInTheBox) {
    fakes::Insert(database, {});
    Fields({22});
    Value("'a,b'");
    Global::PreviewSchedule("1");
    ExpectBoxInsteadOfThePreview("Object required [424]");
}

TEST_F(PreviewSchedule, NumberWithoutAStoredValueEndsInTheBox) {
    fakes::Insert(database, {});
    Fields({7});
    Global::PreviewSchedule("1");
    ExpectBoxInsteadOfThePreview("Invalid use of Null [94]");
}

TEST_F(PreviewSchedule, BooleanWithoutAStoredValueEndsInTheBox) {
    fakes::Insert(database, {});
    Fields({9});
    Global::PreviewSchedule("1");
    ExpectBoxInsteadOfThePreview("Invalid use of Null [94]");
}

TEST_F(PreviewSchedule, DateWithoutAStoredValueEndsInTheBox) {
    fakes::Insert(database, {});
    Fields({16});
    Global::PreviewSchedule("1");
    ExpectBoxInsteadOfThePreview("Invalid use of Null [94]");
}

TEST_F(PreviewSchedule, MoreValuesThanParametersEndInTheBox) {
    fakes::Insert(database, {});
    Fields({12});
    Value("'West'");
    Value("'behind'");
    Global::PreviewSchedule("1");
    ExpectBoxInsteadOfThePreview("Subscript out of range [9]");
}

TEST_F(PreviewSchedule, MissingReportFileEndsInTheBox) {
    fakes::Insert(database, {.path = "Z:\\none.rpt"});
    Global::PreviewSchedule("1");
    ExpectBoxInsteadOfThePreview("File not found: Z:\\none.rpt [53]");
}

TEST_F(PreviewSchedule, UnknownScheduleEndsInTheBox) {
    Global::PreviewSchedule(0);
    ExpectBoxInsteadOfThePreview(
        "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
        "current record. [3021]");
    EXPECT_TRUE(engine.calls.empty());
}

TEST_F(PreviewSchedule, ErrorOfTheRunIsTheWindowsOwnBoxOnly) {
    fakes::Insert(database, {});
    engine.reports[Path].pages.openError = RuntimeError(1000, "No such table");
    Global::PreviewSchedule("1");
    EXPECT_EQ(prompts.boxes, (Boxes{{"No such table [1000]", vbExclamation, "Oxbow Courier"}}));
    EXPECT_TRUE(IsShown());
}
