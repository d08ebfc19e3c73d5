// SPDX-License-Identifier: GPL-3.0-or-later
// Opening the output of a package's report, from both windows.
#include "package_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const Folder = "Z:\\reports\\out\\";
const char* const DeskSelect =
    "select b.destination, r.Reporttitle, r.ReportFormat from ReportBatch b inner join ReportBatchDtls r on "
    "b.ReportID = r.ReportID Where r.ReportID = 1 and r.ReportTitle = '1>sales.rpt'";
const char* const HistorySelect =
    "select b.destination, r.Reporttitle, r.ReportFormat from ReportBatch b inner join ReportBatchDtls r on "
    "b.ReportID = r.ReportID Where b.ReportID = 1 and r.ReportTitle = '1>sales.rpt'";

class PackageOutput : public PackageTest {
 protected:
    void SetUp() override {
        PackageTest::SetUp();
        AddPackage("Month end", {"1>sales.rpt"});
        database.Run("update ReportBatch set Destination='" + std::string(Folder) + "'");
    }
    void Format(const std::string& word) {
        database.Run("update ReportBatchDtls set ReportFormat='" + word + "'");
    }
    // Returns what the entry opens.
    std::string Opened(const char* entry) {
        shell.openings.clear();
        ClickEntry(entry);
        return shell.openings.size() == 1 ? shell.openings[0].file : "";
    }
};

}  // namespace

TEST_F(PackageOutput, DesktopOpensTheFileOfTheReport) {
    frmDesk& window = OpenPackage("Month end");
    ChooseOf(window, "1>sales.rpt", "mnubtcOutput");
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select reportid from reportbatchdtls where detailid =1", std::string(DeskSelect)));
    EXPECT_EQ(shell.openings,
              (std::vector<fakes::Opening>{{"open", std::string(Folder) + "sales.rpt.pdf", "", "", 3}}));
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_FALSE(Hourglass(window));
}

TEST_F(PackageOutput, HistoryWindowFindsTheRowByPackageAndTitle) {
    frmViewer& viewer = OpenHistory();
    SelectAndChoose(*viewer.tvBatch, "1>sales.rpt", "mnuOutput");
    EXPECT_THAT(database.TakeStatements(), ElementsAre(std::string(HistorySelect)));
    EXPECT_EQ(shell.openings,
              (std::vector<fakes::Opening>{{"open", std::string(Folder) + "sales.rpt.pdf", "", "", 3}}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(PackageOutput, EveryFormatWordHasItsExtension) {
    const std::vector<std::pair<const char*, const char*>> words = {
        {"Acrobat", ".pdf"},  {"PDF", ".pdf"},      {"Acrobat Format (PDF)", ".pdf"},
        {"Excel", ".xls"},    {"MS Excel", ".xls"}, {"WinWord", ".doc"},
        {".MS Word", ".doc"}, {"RTF", ".rtf"},      {"Rich Text", ".rtf"},
        {"HTML", ".html"},    {"DHTML", ".html"},
    };
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    for (const auto& [word, extension] : words) {
        Format(word);
        EXPECT_EQ(Opened("mnubtcOutput"), std::string(Folder) + "sales.rpt" + extension) << word;
    }
    frmViewer& viewer = OpenHistory();
    Click(*viewer.tvBatch, "1>sales.rpt");
    for (const auto& [word, extension] : words) {
        Format(word);
        EXPECT_EQ(Opened("mnuOutput"), std::string(Folder) + "sales.rpt" + extension) << word;
    }
}

TEST_F(PackageOutput, FormatWordOutsideTheTableOpensTheNameWithoutAnExtension) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    for (const char* word : {"MS Word", "acrobat", "pdf", "Papyrus", " PDF", ""}) {
        Format(word);
        EXPECT_EQ(Opened("mnubtcOutput"), std::string(Folder) + "sales.rpt") << word;
    }
    database.Run("update ReportBatchDtls set ReportFormat=null");
    EXPECT_EQ(Opened("mnubtcOutput"), std::string(Folder) + "sales.rpt");
}

TEST_F(PackageOutput, TitleWithoutItsMarkIsTheFilesNameAsAWhole) {
    database.Run("update ReportBatchDtls set ReportTitle='Sales'");
    frmDesk& window = OpenPackage("Month end");
    ChooseOf(window, "Sales", "mnubtcOutput");
    ASSERT_EQ(shell.openings.size(), 1U);
    EXPECT_EQ(shell.openings[0].file, std::string(Folder) + "Sales.pdf");
}

TEST_F(PackageOutput, FolderAndNameAreJoinedWithNothingBetween) {
    database.Run("update ReportBatch set Destination='Z:\\reports\\out'");
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    EXPECT_EQ(Opened("mnubtcOutput"), "Z:\\reports\\outsales.rpt.pdf");
    database.Run("update ReportBatch set Destination=null");
    EXPECT_EQ(Opened("mnubtcOutput"), "sales.rpt.pdf");
}

TEST_F(PackageOutput, WhatCannotBeOpenedIsTold) {
    frmDesk& window = OpenPackage("Month end");
    shell.code = 2;
    ChooseOf(window, "1>sales.rpt", "mnubtcOutput");
    frmViewer& viewer = OpenHistory();
    shell.code = 31;
    SelectAndChoose(*viewer.tvBatch, "1>sales.rpt", "mnuOutput");
    EXPECT_EQ(prompts.boxes,
              (Boxes{{"File not found", vbExclamation, "Oxbow Courier"},
                     {"No application is associated with this file type.", vbExclamation, "Oxbow Courier"}}));
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(PackageOutput, ReportThatIsGoneMeanwhileIsTold) {
    frmDesk& window = OpenPackage("Month end");
    ClickItem(window, "1>sales.rpt");
    database.Run("update ReportBatchDtls set ReportTitle='1>other.rpt'");
    ClickEntry("mnubtcOutput");
    database.Run("delete from ReportBatchDtls");
    ClickEntry("mnubtcOutput");
    ASSERT_EQ(prompts.boxes.size(), 2U);
    for (const fakes::Box& box : prompts.boxes) {
        EXPECT_THAT(box.text, testing::StartsWith("Oxbow Courier encountred an error. "));
        EXPECT_THAT(box.text, testing::EndsWith(" [3021]"));
    }
    EXPECT_THAT(shell.openings, IsEmpty());
}

TEST_F(PackageOutput, NothingSelectedIsTold) {
    OpenPackage("Month end");
    ClickEntry("mnubtcOutput");
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(91, "Object variable or With block variable not set")});
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(PackageOutput, NoDesktopWindowIsTold) {
    OpenHistory();
    for (const char* entry : {"mnubtcOutput", "mnubtcPar", "mnubtcDelSel"}) {
        prompts.boxes.clear();
        ClickEntry(entry);
        EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(9, "Subscript out of range")}) << entry;
    }
    EXPECT_FALSE(frame.BusyShown());
}
