// SPDX-License-Identifier: GPL-3.0-or-later
// Editing the parameter values of a package's report, from both windows.
#include "package_fixture.h"
#include "platform/controls/combo_box.h"
#include "support/modal.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const fakes::Box NoParameters{"This report does not have any parameters.", vbInformation, "Oxbow Courier"};
const char* const Path = "Z:\\reports\\sales.rpt";

class PackageParameters : public PackageTest {
 protected:
    // Month end of two reports, both with values.
    void SetUp() override {
        PackageTest::SetUp();
        AddPackage("Month end", {"1>sales.rpt", "2>stock.rpt"});
        GiveParameters({"Region", "Year"});
        Store(1, 1, {"North", "2025"});
        Store(1, 2, {"South"});
    }
    const Texts before = {"1|1|North", "1|1|2025", "1|2|South"};
};

}  // namespace

TEST_F(PackageParameters, DesktopPutsTheNewValuesInPlaceOfTheOld) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    WhileAsked("mnubtcPar", [](frmPar& form) { Answer(form, {"West", "2026"}); });
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select ReportID from ReportBatchDtls Where DetailID = 1",
                    "select * From ReportBatchDtls Where DetailID = 1 and Reporttitle = '1>sales.rpt'",
                    "select ParValue from ReportBatchPar Where DetailID = 1",
                    "delete from ReportBatchPar Where DetailID = 1",
                    "insert into ReportBatchPar(ReportID, DetailID, ParValue) Values(1,1,'West')",
                    "insert into ReportBatchPar(ReportID, DetailID, ParValue) Values(1,1,'2026')"));
    EXPECT_THAT(Stored(), ElementsAre("1|2|South", "1|1|West", "1|1|2026"));
    EXPECT_EQ(engine.calls[0], "open " + std::string(Path));
    EXPECT_EQ(Global::ParCaller, "frmViewer");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(PackageParameters, HistoryWindowDoesSoByPackageAndReport) {
    frmViewer& viewer = OpenHistory();
    Click(*viewer.tvBatch, "1>sales.rpt");
    WhileAsked("mnuEditPar", [](frmPar& form) { Answer(form, {"West", "2026"}); });
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select DetailID, ReportPath,username,password From ReportBatchDtls Where ReportID = 1 "
                    "and Reporttitle = '1>sales.rpt'",
                    "select ParValue from ReportBatchPar Where ReportID = 1 and DetailID = 1",
                    "delete from ReportBatchPar Where ReportID = 1 and DetailID = 1",
                    "insert into ReportBatchPar(ReportID, DetailID, ParValue) Values(1,1,'West')",
                    "insert into ReportBatchPar(ReportID, DetailID, ParValue) Values(1,1,'2026')"));
    EXPECT_THAT(Stored(), ElementsAre("1|2|South", "1|1|West", "1|1|2026"));
    EXPECT_EQ(Global::ParCaller, "frmViewer");
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(PackageParameters, MenusOfBothWindowsHaveTheEntry) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt", Qt::RightButton);
    EXPECT_THAT(Shown(Popup()), Contains("Edit Parameters..."));
    EXPECT_TRUE(frame.Entry("mnubtcPar")->isEnabled());
    frame.Menu(Popup())->close();
    frmViewer& viewer = OpenHistory();
    Click(*viewer.tvBatch, "1>sales.rpt", Qt::RightButton);
    EXPECT_THAT(Shown(Popup()), Contains("Edit Parameters..."));
    EXPECT_TRUE(frame.Entry("mnuEditPar")->isEnabled());
}

TEST_F(PackageParameters, StoredValuesAreReadAndTheBoxesAreEmptyAllTheSame) {
    GiveParameters({"Region", "Year"}, {{"North", "South"}, {}});
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    WhileAsked("mnubtcPar", [](frmPar& form) {
        for (const ComboBox* box : form.findChildren<ComboBox*>()) {
            EXPECT_EQ(box->Text(), "");
        }
    });
}

TEST_F(PackageParameters, CancelLeavesTheStoredValuesUntouched) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    WhileAsked("mnubtcPar", [](frmPar& form) { Answer(form, {"West", "2026"}, "cmdCancel"); });
    EXPECT_EQ(database.TakeStatements().back(), "select ParValue from ReportBatchPar Where DetailID = 1");
    EXPECT_EQ(Stored(), before);
    frmViewer& viewer = OpenHistory();
    Click(*viewer.tvBatch, "1>sales.rpt");
    WhileAsked("mnuEditPar", [](frmPar& form) { QTest::keyClick(&form, Qt::Key_Escape); });
    EXPECT_EQ(database.TakeStatements().back(),
              "select ParValue from ReportBatchPar Where ReportID = 1 and DetailID = 1");
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(PackageParameters, RefusedValueLeavesTheStoredValuesUntouched) {
    engine.reports[Path].parameterTypes = {report::StringField, report::NumberField};
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    WhileAsked("mnubtcPar", [](frmPar& form) { Answer(form, {"West", "soon"}); });
    EXPECT_THAT(prompts.boxes,
                ElementsAre(fakes::Box{"The value \"soon\" of the parameter \"Year\" is not a number. Type "
                                       "mismatch [13]",
                                       vbExclamation, "Oxbow Courier"}));
    EXPECT_EQ(Stored(), before);
    EXPECT_THAT(process.ends, IsEmpty());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(PackageParameters, CancelOfTheTimeBeforeIsForgotten) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    WhileAsked("mnubtcPar", [](frmPar& form) { Answer(form, {"West", "2026"}, "cmdCancel"); });
    EXPECT_TRUE(Global::ParCancelled);
    WhileAsked("mnubtcPar", [](frmPar& form) { Answer(form, {"West", "2026"}); });
    EXPECT_THAT(Stored(), ElementsAre("1|2|South", "1|1|West", "1|1|2026"));
}

TEST_F(PackageParameters, ReportWithoutParametersIsToldAndNothingIsWritten) {
    GiveParameters({});
    Global::ParCancelled = true;
    Global::ParValues = {"", "left", "over"};
    frmDesk& window = OpenPackage("Month end");
    ChooseOf(window, "1>sales.rpt", "mnubtcPar");
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select ReportID from ReportBatchDtls Where DetailID = 1",
                    "select * From ReportBatchDtls Where DetailID = 1 and Reporttitle = '1>sales.rpt'",
                    "select ParValue from ReportBatchPar Where DetailID = 1"));
    EXPECT_FALSE(Global::ParCancelled);
    EXPECT_EQ(Global::ParValues, (Texts{"", "North", "2025"}));
    EXPECT_FALSE(Hourglass(window));
    frmViewer& viewer = OpenHistory();
    SelectAndChoose(*viewer.tvBatch, "2>stock.rpt", "mnuEditPar");
    EXPECT_THAT(database.TakeStatements().back(),
                "select ParValue from ReportBatchPar Where ReportID = 1 and DetailID = 2");
    EXPECT_EQ(prompts.boxes, (Boxes{NoParameters, NoParameters}));
    EXPECT_EQ(Stored(), before);
}

TEST_F(PackageParameters, MarksAreLeftOutOfWhatIsStored) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    WhileAsked("mnubtcPar", [](frmPar& form) { Answer(form, {"O'Brien", ""}); });
    EXPECT_THAT(Stored(), ElementsAre("1|2|South", "1|1|OBrien", "1|1|"));
}

TEST_F(PackageParameters, FieldBeyondTheListTakesAnEmptyValue) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    prompts.onBox = [] { ADD_FAILURE() << "a box"; };
    WhileAsked("mnubtcPar", [](frmPar& form) {
        Answer(form, {"West", "2026"});
        Global::ParValues.resize(2);
    });
    EXPECT_THAT(Stored(), ElementsAre("1|2|South", "1|1|West", "1|1|"));
}

TEST_F(PackageParameters, HourglassIsUpWhileTheReportIsOpenedAndWhileItsValuesAreStored) {
    ClickItem(OpenPackage("Month end"), "1>sales.rpt");
    const int desk = Global::DeskIndex;
    OpenHistory();
    Click(*OnScreen()->tvBatch, "1>sales.rpt");
    for (const char* entry : {"mnuEditPar", "mnubtcPar"}) {
        Global::DeskIndex = static_cast<std::int16_t>(desk);
        fakes::FakeFrame seen;
        std::vector<int> whileAsked;
        fakes::WhileModal<frmPar>([this, entry] { frame.Entry(entry)->trigger(); },
                                  [&](frmPar& form) {
                                      whileAsked = seen.pointers;
                                      Answer(form, {"West", "2026"});
                                  });
        Global::Frame = &frame;
        EXPECT_THAT(whileAsked, ElementsAre(11, 0)) << entry;
        EXPECT_THAT(seen.pointers, ElementsAre(11, 0, 11, 0)) << entry;
    }
}

TEST_F(PackageParameters, ReportThatCannotBeOpenedIsReportedAfterTheHourglass) {
    engine.reports.clear();
    prompts.onBox = [this] { EXPECT_FALSE(frame.BusyShown()); };
    frmDesk& window = OpenPackage("Month end");
    ChooseOf(window, "1>sales.rpt", "mnubtcPar");
    frmViewer& viewer = OpenHistory();
    SelectAndChoose(*viewer.tvBatch, "1>sales.rpt", "mnuEditPar");
    const fakes::Box error = ErrorBox(53, "File not found: " + std::string(Path));
    EXPECT_EQ(prompts.boxes, (Boxes{error, error}));
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(PackageParameters, ReportThatIsNotFoundByItsTitleIsNotTakenForTheOneThatIsOpen) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    Global::OpenReport(Path);  // for this command a different report
    database.Run("update ReportBatchDtls set ReportTitle='1>other.rpt' where DetailID=1");
    ClickEntry("mnubtcPar");
    frmViewer& viewer = OpenHistory();
    Click(*viewer.tvBatch, "1>other.rpt");
    database.Run("update ReportBatchDtls set ReportTitle='1>sales.rpt' where DetailID=1");
    ClickEntry("mnuEditPar");
    const fakes::Box error = ErrorBox(91, "Object variable or With block variable not set");
    EXPECT_EQ(prompts.boxes, (Boxes{error, error}));
    EXPECT_EQ(Stored(), before);
    EXPECT_FALSE(frame.BusyShown());
}

TEST_F(PackageParameters, ReportThatIsGoneAlreadyIsTold) {
    frmDesk& window = OpenPackage("Month end");
    database.Run("delete from ReportBatchDtls");
    ChooseOf(window, "1>sales.rpt", "mnubtcPar");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::EndsWith(" [3021]"));
    EXPECT_EQ(Stored(), before);
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(PackageParameters, FailureWhileStoringIsToldAndTheOldValuesAreGone) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    database.Run(
        "create trigger Kept before insert on ReportBatchPar when new.ParValue='2026' "
        "begin select raise(abort, 'kept'); end");
    prompts.onBox = [this] { EXPECT_FALSE(frame.BusyShown()); };
    WhileAsked("mnubtcPar", [](frmPar& form) { Answer(form, {"West", "2026"}); });
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_THAT(prompts.boxes[0].text, testing::StartsWith("Oxbow Courier encountred an error. "));
    EXPECT_THAT(Stored(), ElementsAre("1|2|South", "1|1|West"));
}

TEST_F(PackageParameters, NothingSelectedIsTold) {
    frmDesk& window = OpenPackage("Month end");
    ClickEntry("mnubtcPar");
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(91, "Object variable or With block variable not set")});
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_FALSE(Hourglass(window));
}
