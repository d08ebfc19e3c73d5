// SPDX-License-Identifier: GPL-3.0-or-later
// The package wizard's third page: folders, files, and the reports of the package with their values.
#include <QMimeData>
#include <QUrl>

#include "dialogs/package_wizard_fixture.h"

TEST_F(PackageWizard, ListsReportFilesOfTheFolder) {
    GoToReports();
    EXPECT_EQ(Lines("filList"), (Texts{"sales.rpt", "stock.rpt"}));
    EXPECT_EQ(The<DirListBox>("dirList").toolTip(), "Key press to select another location");
}

TEST_F(PackageWizard, FilesFollowTheFolder) {
    WriteBytes(reports / "old" / "last.rpt", "");
    The<DirListBox>("dirList").Path(PathOf("old"));
    EXPECT_EQ(The<FileListBox>("filList").Path(), PathOf("old"));
    EXPECT_EQ(Lines("filList"), (Texts{"last.rpt"}));
}

TEST_F(PackageWizard, AnyKeyOnTheFoldersAsksForAnother) {
    GoToReports();
    shell.folder = PathOf("old");
    QTest::keyClick(&The<DirListBox>("dirList"), Qt::Key_X);
    EXPECT_EQ(shell.titles, (Texts{"Browse for Folder"}));
    EXPECT_EQ(The<DirListBox>("dirList").Path(), PathOf("old"));
    EXPECT_TRUE(registry.writes.empty());
    shell.folder = "";
    QTest::keyClick(&The<DirListBox>("dirList"), Qt::Key_Down);
    EXPECT_EQ(shell.titles.size(), 2U);
    EXPECT_EQ(The<DirListBox>("dirList").Path(), PathOf("old"));
}

TEST_F(PackageWizard, EscapeOnTheFoldersCancels) {
    GoToReports();
    QTest::keyClick(&The<DirListBox>("dirList"), Qt::Key_Escape);
    EXPECT_TRUE(shell.titles.empty());
    EXPECT_FALSE(form->isVisible());
}

TEST_F(PackageWizard, ChangedDirectoryIsKept) {
    GoToReports();
    shell.folder = PathOf("old");
    Click("cmdFolder");
    EXPECT_EQ(shell.titles, (Texts{"Browse for Folder"}));
    EXPECT_EQ(The<DirListBox>("dirList").Path(), PathOf("old"));
    EXPECT_EQ(Global::DefPath, PathOf("old"));
    EXPECT_EQ(registry.writes, (Texts{std::string(ShellMod::SettingsKey) + "\\DefPath=" + PathOf("old")}));
}

TEST_F(PackageWizard, CancelledChangeOfDirectoryChangesNothing) {
    GoToReports();
    const std::string before = Global::DefPath;
    Click("cmdFolder");
    EXPECT_EQ(Global::DefPath, before);
    EXPECT_EQ(The<DirListBox>("dirList").Path(), before);
    EXPECT_TRUE(registry.writes.empty());
}

TEST_F(PackageWizard, FileListTellsTheSelectedFileAsItsTip) {
    GoToReports();
    auto& files = The<FileListBox>("filList");
    Select("stock.rpt");
    emit files.MouseMove();
    EXPECT_EQ(files.toolTip(), "stock.rpt");
}

TEST_F(PackageWizard, AddedReportIsALineWithARunningNumber) {
    GoToReports();
    frame.pointers.clear();
    Add("sales.rpt");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt"}));
    EXPECT_EQ(Lines("lsvPaths"), (Texts{PathOf("sales.rpt")}));
    EXPECT_EQ(Global::PackageCounter, 1);
    EXPECT_EQ(Global::ParReportName, "1>sales.rpt");
    EXPECT_EQ(engine.calls, (Texts{"open " + PathOf("sales.rpt")}));
    EXPECT_NE(Global::CurrentReport, nullptr);
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
    EXPECT_EQ(WaitingRows(), Texts{});
}

TEST_F(PackageWizard, ValuesAreAskedForTheMomentAReportIsAdded) {
    GoToReports();
    Select("stock.rpt");
    fakes::WhileModal<frmPar>([this] { Click("cmbBrowse1"); },
                              [](frmPar& par) {
                                  EXPECT_TRUE(par.findChild<QPushButton*>("cmdCancel")->isHidden());
                                  par.findChild<ComboBox*>("cmbRegion")->setEditText("North");
                                  par.findChild<ComboBox*>("cmbYear")->setEditText("2026");
                                  QTest::mouseClick(par.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
                              });
    EXPECT_EQ(WaitingRows(), (Texts{"1>stock.rpt|Region|North", "1>stock.rpt|Year|2026"}));
}

TEST_F(PackageWizard, ReportAddedTwiceIsTwoReportsWithValuesOfTheirOwn) {
    GoToReports();
    AddWithValues("stock.rpt", "North", "2025");
    AddWithValues("stock.rpt", "South", "2026");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>stock.rpt", "2>stock.rpt"}));
    EXPECT_EQ(Lines("lsvPaths"), Texts(2, PathOf("stock.rpt")));
    EXPECT_EQ(WaitingRows(), (Texts{"1>stock.rpt|Region|North", "1>stock.rpt|Year|2025",
                                    "2>stock.rpt|Region|South", "2>stock.rpt|Year|2026"}));
}

TEST_F(PackageWizard, ValuesWaitForThePackageThoughAnotherFormAskedForSomeMeanwhile) {
    GoToReports();
    Global::ParCaller = "frmPar";
    AddWithValues("stock.rpt", "North", "2026");
    EXPECT_EQ(WaitingRows(), (Texts{"1>stock.rpt|Region|North", "1>stock.rpt|Year|2026"}));
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(PackageWizard, RemovingALineWithAMarkEndsTheProcessAndKeepsTheLine) {
    AddReport("ann's.rpt");
    The<FileListBox>("filList").Path(Global::DefPath);
    GoToReports();
    Add("ann's.rpt");
    The<ListBox>("lsvReports").ListIndex(0);
    Click("Command1");
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_TRUE(prompts.boxes[0].text.starts_with("Run-time error \"-2147217900\":"))
        << prompts.boxes[0].text;
    EXPECT_EQ(process.ends, (std::vector<int>{1}));
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>ann's.rpt"}));
}

TEST_F(PackageWizard, DoubleClickAndEnterAddTheFile) {
    GoToReports();
    auto& files = The<FileListBox>("filList");
    const QPoint place = files.visualItemRect(files.item(0)).center();
    QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(files.viewport(), Qt::LeftButton, {}, place);
    QTest::keyClick(&files, Qt::Key_Return);
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt", "2>sales.rpt"}));
    EXPECT_EQ(Page(), "Step3");
}

TEST_F(PackageWizard, FileDroppedOnTheReportsAddsTheSelectedOne) {
    GoToReports();
    Select("sales.rpt");
    QMimeData dragged;
    dragged.setUrls({QUrl::fromLocalFile(QString::fromStdString((reports / "stock.rpt").string()))});
    QWidget* list = The<ListBox>("lsvReports").viewport();
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list, &drop);
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt"}));
}

TEST_F(PackageWizard, AddingWithNoFileSelectedAddsALineWithoutAName) {
    GoToReports();
    Click("cmbBrowse1");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>"}));
    EXPECT_EQ(Lines("lsvPaths"),
              (Texts{PathOf("") == Global::DefPath ? PathOf("") + "\\" : Global::DefPath + "\\"}));
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(PackageWizard, FileThatDoesNotOpenAsksForNoValuesOfTheReportBefore) {
    GoToReports();
    AddWithValues("stock.rpt", "North", "2025");
    WriteBytes(reports / "broken.rpt", "");
    The<FileListBox>("filList").Path(Global::DefPath);
    Select("broken.rpt");
    EXPECT_FALSE(fakes::ComesUp<frmPar>([this] { Click("cmbBrowse1"); }, [](frmPar&) {}));
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>stock.rpt", "2>broken.rpt"}));
    EXPECT_EQ(WaitingRows().size(), 2U);
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(frame.pointers.back(), 0);
}

TEST_F(PackageWizard, RemovedReportTakesItsPathAndValuesAlong) {
    GoToReports();
    Add("sales.rpt");
    AddWithValues("stock.rpt", "North", "2025");
    Add("sales.rpt");
    The<ListBox>("lsvReports").ListIndex(1);
    database.TakeStatements();
    Click("Command1");
    EXPECT_EQ(database.TakeStatements(), (Texts{"delete from tmpPar Where rptName = '2>stock.rpt'"}));
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt", "3>sales.rpt"}));
    EXPECT_EQ(Lines("lsvPaths"), Texts(2, PathOf("sales.rpt")));
    EXPECT_EQ(WaitingRows(), Texts{});
}

TEST_F(PackageWizard, ReportRemovedAndAddedAgainGetsAHigherNumber) {
    GoToReports();
    Add("sales.rpt");
    The<ListBox>("lsvReports").ListIndex(0);
    Click("Command1");
    Add("sales.rpt");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"2>sales.rpt"}));
}

TEST_F(PackageWizard, NumbersGoOnAcrossWizardsThatWereCancelled) {
    GoToReports();
    Add("sales.rpt");
    Click("cmdCancel");
    Show();
    GoToReports();
    Add("sales.rpt");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"2>sales.rpt"}));
}

TEST_F(PackageWizard, RemoveIsOpenWhileALineIsSelected) {
    GoToReports();
    const auto& remove = The<QPushButton>("Command1");
    EXPECT_FALSE(remove.isEnabled());
    Add("sales.rpt");
    Add("sales.rpt");
    EXPECT_FALSE(remove.isEnabled());
    auto& lines = The<ListBox>("lsvReports");
    const auto click = [&lines](int line) {
        QTest::mouseClick(lines.viewport(), Qt::LeftButton, {},
                          lines.visualItemRect(lines.item(line)).center());
    };
    click(1);
    EXPECT_TRUE(remove.isEnabled());
    Click("Command1");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt"}));
    EXPECT_FALSE(remove.isEnabled());
    click(0);
    Click("Command1");
    EXPECT_EQ(Lines("lsvReports"), Texts{});
    EXPECT_FALSE(remove.isEnabled());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(PackageWizard, ReportWhoseValueIsRefusedIsNotAdded) {
    GoToReports();
    engine.reports[PathOf("stock.rpt")].parameterTypes = {report::StringField, report::NumberField};
    Add("sales.rpt");
    AddWithValues("stock.rpt", "North", "many");
    EXPECT_EQ(TakeBoxes(), (Boxes{Warning("The value \"many\" of the parameter \"Year\" is not a number. "
                                          "Type mismatch [13]")}));
    EXPECT_TRUE(process.ends.empty());
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt"}));
    EXPECT_EQ(Lines("lsvPaths"), (Texts{PathOf("sales.rpt")}));
    EXPECT_EQ(WaitingRows(), Texts{});
    AddWithValues("stock.rpt", "North", "2026");
    EXPECT_EQ(Lines("lsvReports"), (Texts{"1>sales.rpt", "3>stock.rpt"}));
    EXPECT_EQ(WaitingRows().size(), 2U);
}

TEST_F(PackageWizard, PictureButtonsSayWhatTheyDo) {
    EXPECT_FALSE(The<QPushButton>("cmbBrowse1").icon().isNull());
    EXPECT_FALSE(The<QPushButton>("Command1").icon().isNull());
    EXPECT_EQ(The<QPushButton>("cmbBrowse1").accessibleName(), "Add the selected report to the package");
    EXPECT_EQ(The<QPushButton>("Command1").accessibleName(), "Remove the selected report from the package");
}
