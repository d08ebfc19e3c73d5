// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/RunReport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/base/paths.h"
#include "support/run_fixture.h"

namespace {

const char* const Path = "Z:\\reports\\sales.rpt";

class RunReport : public fakes::RunFixture {
 protected:
    RunReport() : RunFixture(fakes::At(2002, 1, 1, 5, 30)) {}
    void SetUp() override {
        SetCommand("-sched");
        engine.reports[Path].title = "Sales 2026";
        engine.reports[Path].tables = 2;
    }
    void TearDown() override { SetCommand({}); }
    bool Run(const std::string& format, const std::string& formula = {}, const std::string& user = {},
             const std::string& password = {}) {
        return Global::RunReport(7, Path, "Body", "Subject", "ann;bob;", format, formula, user, password);
    }
    // Returns "number: description" of the error that the call raises, or an empty text.
    template <typename Call>
    static std::string ErrorOf(Call call) {
        try {
            call();
        } catch (const RuntimeError& error) {
            return std::to_string(error.Number()) + ": " + error.Description();
        }
        return {};
    }
    void Parameter(const std::string& value) {
        database.Run("insert into ReportParameter values(7, 'P', " + value + ")");
    }
};

using Calls = std::vector<std::string>;

}  // namespace

TEST_F(RunReport, PdfIsMailedByTheEngineInThisOrder) {
    EXPECT_TRUE(Run("Acrobat Format (PDF)"));
    EXPECT_EQ(engine.calls, (Calls{"open " + std::string(Path), "switches False False", "destination 2",
                                   "mail [ann;bob;][Subject][Body]", "format 31", "export False"}));
    EXPECT_EQ(database.TakeStatements(), Calls{"select * from ReportParameter where ReportID = 7"});
    EXPECT_EQ(loop.yields, 1);
    EXPECT_TRUE(mail.sent.empty());
}

TEST_F(RunReport, WordAndRichTextDifferByTheirCode) {
    EXPECT_TRUE(Run("MS Word"));
    EXPECT_TRUE(Run("Rich Text"));
    EXPECT_EQ(CallsWith("format"), (Calls{"format 14", "format 35"}));
}

TEST_F(RunReport, ExcelOptionsStandBetweenMailAndFormat) {
    EXPECT_TRUE(Run("MS Excel"));
    EXPECT_EQ(engine.calls, (Calls{"open " + std::string(Path), "switches False False", "destination 2",
                                   "mail [ann;bob;][Subject][Body]", "excel True False False False 4",
                                   "format 27", "export False"}));
}

TEST_F(RunReport, HtmlGoesToAFileAndIsMailedAfterASecond) {
    EXPECT_TRUE(Run("DHTML"));
    const std::string file = AppPath() + "\\output\\Sales20265.htm";
    EXPECT_EQ(engine.calls, (Calls{"open " + std::string(Path), "switches False False", "destination 1",
                                   "format 32", "html file " + file, "export False"}));
    EXPECT_EQ(loop.waits, 1);
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].subject, "Subject");
    EXPECT_EQ(mail.sent[0].text, "Body");
    EXPECT_EQ(mail.sent[0].recipients, (Calls{"ann", "bob"}));
    EXPECT_EQ(mail.sent[0].attachments, (std::vector<std::pair<int, std::string>>{{5, file}}));
}

TEST_F(RunReport, HtmlOfATitleThatLeavesTheFolderFailsTheRun) {
    engine.reports[Path].title = ". ./. ./evil";
    EXPECT_EQ(ErrorOf([&] { Run("HTML"); }), "76: Path not found: \"../../evil5.htm\" is not a file name");
    EXPECT_TRUE(CallsWith("export").empty());
    EXPECT_TRUE(mail.sent.empty());
}

TEST_F(RunReport, HtmlGivesTheMailsResult) {
    mail.sendErrors = {RuntimeError(500, "refused")};
    EXPECT_FALSE(Run("HTML"));
}

TEST_F(RunReport, UnknownFormatIsFalseAndLeavesNoTrace) {
    EXPECT_FALSE(Run("Text"));
    EXPECT_TRUE(CallsWith("export").empty());
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(mail.sent.empty());
}

TEST_F(RunReport, EveryStepComesInItsOrder) {
    engine.reports[Path].parameterTypes = {12};
    Parameter("'West'");
    EXPECT_TRUE(Run("MS Excel", "{a} = 1", "scott", "tiger"));
    EXPECT_EQ(engine.calls,
              (Calls{"open " + std::string(Path), "logon 1 [][][scott][tiger]", "logon 2 [][][scott][tiger]",
                     "clear 1", "value 1 text West", "switches False False", "formula {a} = 1",
                     "destination 2", "mail [ann;bob;][Subject][Body]", "excel True False False False 4",
                     "format 27", "export False"}));
}

TEST_F(RunReport, DatabaseIsReadBeforeTheReportIsOpened) {
    std::filesystem::remove(database.Folder() / "PressroomLive.dat");
    EXPECT_EQ(ErrorOf([&] { Run("PDF"); }), "-2147467259: Could not find the data file \"" +
                                                paths::ForUser(AppPath() + "\\PressroomLive.dat") + "\"");
    EXPECT_TRUE(engine.calls.empty());
}

TEST_F(RunReport, SecondRunOfAnHourReplacesTheFileAndOlderFilesStay) {
    const auto folder = database.Folder() / "output";
    int run = 0;
    engine.onExport = [&](const std::string& file) {
        std::ofstream(folder / file.substr(file.rfind('\\') + 1)) << ++run;
    };
    const auto content = [&](const char* name) {
        std::ifstream file(folder / name);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    clock.now = fakes::At(2002, 1, 1, 5, 10);
    EXPECT_TRUE(Run("HTML"));
    clock.now = fakes::At(2002, 1, 1, 5, 50);
    EXPECT_TRUE(Run("HTML"));
    EXPECT_EQ(content("Sales20265.htm"), "2");
    clock.now = fakes::At(2002, 1, 1, 6, 0);
    EXPECT_TRUE(Run("HTML"));
    EXPECT_EQ(content("Sales20265.htm"), "2");
    EXPECT_EQ(content("Sales20266.htm"), "3");
}

TEST_F(RunReport, FewerValuesThanFieldsLeaveTheOthersWithout) {
    engine.reports[Path].parameterTypes = {12, 12};
    Parameter("'West'");
    EXPECT_TRUE(Run("PDF"));
    EXPECT_EQ(CallsWith("value"), Calls{"value 1 text West"});
}

TEST_F(RunReport, LogsEveryTableOnWithEmptyServerAndDatabase) {
    EXPECT_TRUE(Run("PDF", "", "scott", "tiger"));
    EXPECT_EQ(CallsWith("logon"), (Calls{"logon 1 [][][scott][tiger]", "logon 2 [][][scott][tiger]"}));
}

TEST_F(RunReport, UserWithoutPasswordRunsWithoutLogon) {
    EXPECT_TRUE(Run("PDF", "", "scott", ""));
    EXPECT_TRUE(Run("PDF", "", "", "tiger"));
    EXPECT_TRUE(CallsWith("logon").empty());
}

TEST_F(RunReport, FormulaIsSetUnlessItIsEmpty) {
    EXPECT_TRUE(Run("PDF", "{Orders.Year} = 2026"));
    EXPECT_EQ(CallsWith("formula"), Calls{"formula {Orders.Year} = 2026"});
}

TEST_F(RunReport, WithoutStoredValuesEveryFieldIsClearedAndGetsNone) {
    engine.reports[Path].parameterTypes = {7, 12};
    EXPECT_TRUE(Run("PDF"));
    EXPECT_EQ(CallsWith("clear"), (Calls{"clear 1", "clear 2"}));
    EXPECT_TRUE(CallsWith("value").empty());
}

TEST_F(RunReport, ValuesAreConvertedByTheFieldsType) {
    engine.reports[Path].parameterTypes = {7, 9, 12, 16, 22};
    Parameter("'12.5'");
    Parameter("'True'");
    Parameter("'West'");
    Parameter("'2026-11-21'");
    Parameter("'a,b'");
    EXPECT_TRUE(Run("PDF"));
    EXPECT_EQ(CallsWith("value"), (Calls{"value 1 double 12.5", "value 2 boolean True", "value 3 text West",
                                         "value 4 date 2026-11-21 00:00:00", "value 5 field a,b"}));
}

TEST_F(RunReport, RowOfAnotherTypeIsConsumedWithoutAValue) {
    for (const int type : {8, 10, 11, 13, 14, 15, 17, 18, 19, 20, 21, 6, 0, 23}) {
        engine.reports[Path].parameterTypes.push_back(type);
        Parameter("'passed over'");
    }
    engine.reports[Path].parameterTypes.push_back(12);
    Parameter("'last'");
    EXPECT_TRUE(Run("PDF"));
    EXPECT_EQ(CallsWith("value"), Calls{"value 15 text last"});
}

TEST_F(RunReport, WordForANumberFailsTheRun) {
    engine.reports[Path].parameterTypes = {7};
    Parameter("'abc'");
    EXPECT_EQ(ErrorOf([&] { Run("PDF"); }), "13: Type mismatch");
    EXPECT_TRUE(CallsWith("export").empty());
}

TEST_F(RunReport, NullForADateFailsTheRun) {
    engine.reports[Path].parameterTypes = {16};
    Parameter("null");
    EXPECT_EQ(ErrorOf([&] { Run("PDF"); }), "94: Invalid use of Null");
}

TEST_F(RunReport, MoreValuesThanFieldsFailTheRun) {
    engine.reports[Path].parameterTypes = {12};
    Parameter("'a'");
    Parameter("'b'");
    EXPECT_EQ(ErrorOf([&] { Run("PDF"); }), "9: Subscript out of range");
    EXPECT_TRUE(CallsWith("export").empty());
}

TEST_F(RunReport, MissingFileLeavesTheReportBefore) {
    EXPECT_TRUE(Run("PDF"));
    const auto before = Global::CurrentReport;
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(ErrorOf([] { Global::RunReport(7, "Z:\\none.rpt", "", "", "", "PDF", "", "", ""); }),
              "53: File not found: Z:\\none.rpt");
    EXPECT_EQ(Global::CurrentReport, before);
}

TEST_F(RunReport, KeyThatIsNoNumberFails) {
    EXPECT_EQ(ErrorOf([] { Global::RunReport("x y", Path, "", "", "", "PDF", "", "", ""); }),
              "-2147217900: The statement is not understood; near \"y\": syntax error");
    EXPECT_TRUE(engine.calls.empty());
}

TEST_F(RunReport, HidesTheMainWindowInTheSchedulerOnly) {
    EXPECT_TRUE(Run("PDF"));
    EXPECT_EQ(frame.hides, 1);
    SetCommand({});
    EXPECT_TRUE(Run("PDF"));
    EXPECT_EQ(frame.hides, 1);
}

TEST_F(RunReport, ErrorOfTheExportPassesToTheCaller) {
    engine.reports[Path].exportError = RuntimeError(1000, "cannot");
    EXPECT_EQ(ErrorOf([&] { Run("PDF"); }), "1000: cannot");
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(RunReport, TheEngineIsMadeOnceAndTheReportStays) {
    EXPECT_EQ(Global::ReportEngine, nullptr);
    EXPECT_TRUE(Run("PDF"));
    const auto made = Global::ReportEngine;
    EXPECT_TRUE(Run("PDF"));
    EXPECT_EQ(Global::ReportEngine, made);
    EXPECT_NE(Global::CurrentReport, nullptr);
}

TEST_F(RunReport, OtherKindOfFieldCanBeRefused) {
    engine.reports[Path].parameterTypes = {22};
    report::Report& report = Global::OpenReport(Path);
    EXPECT_EQ(ErrorOf([&] { Global::HandOverParameter(report, 1, "x", Global::OtherFieldRule::Fail); }),
              "424: Object required");
}

TEST_F(RunReport, BusyCursorSetsTheScreenPointer) {
    Global::BusyCursor(true);
    Global::BusyCursor(false);
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
}

TEST_F(RunReport, BusyCursorReachesTheCurrentDesktopWindow) {
    fakes::FakeDesk other, current;
    Global::DeskWindows = {nullptr, &other, &current};
    Global::DeskIndex = 2;
    Global::BusyCursor(true);
    Global::BusyCursor(false);
    EXPECT_EQ(current.pointers, (std::vector<int>{11, 0}));
    EXPECT_TRUE(other.pointers.empty());
    Global::DeskWindows.clear();
    Global::DeskIndex = 0;
}

TEST_F(RunReport, AttachmentListIsClearedWhole) {
    Global::AttachmentList.fill("x");
    Global::ClearAttachmentList();
    for (const std::string& slot : Global::AttachmentList) {
        EXPECT_EQ(slot, "");
    }
}
