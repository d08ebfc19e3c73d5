// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the page, by mouse and keys.
#include "designer/report_dialogs/page_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "../shown_dialog.h"

namespace designer {
namespace {

using testing::HasSubstr;

std::string Report(const std::string& page) {
    return R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">
  <ReportSections>
    <ReportSection>
      <Body>
        <Height>8cm</Height>
      </Body>
      <Width>16cm</Width>
)" + page + R"(    </ReportSection>
  </ReportSections>
</Report>
)";
}

const std::string A4 = Report(R"(      <Page>
        <PageHeight>29.7cm</PageHeight>
        <PageWidth>210mm</PageWidth>
        <LeftMargin>2cm</LeftMargin>
      </Page>
)");

class PageDialogTest : public test::ShownDialogTest {
 protected:
    PageDialogTest() : m_model(Document(A4)) { Open(); }
    void Open() { Show(std::make_unique<PageDialog>(m_model)); }
    void Use(const std::string& report) {
        m_model.SetDocument(Document(report));
        Open();
    }
    const std::string& Text() const { return m_model.Source().Text(); }

    DesignModel m_model;
};

TEST_F(PageDialogTest, OkWithoutAChangeChangesNothing) {
    EXPECT_EQ(The<QComboBox>("paper").currentText(), "A4");
    EXPECT_EQ(The<QComboBox>("orientation").currentText(), "Upright");
    EXPECT_EQ(Line("width") + " " + Line("right") + " " + Line("columns"), "210mm 0in 1");
    EXPECT_EQ(Note("paper"), "Room for a body of 190mm");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Text(), A4);
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(PageDialogTest, APaperByItsNameKeepsTheUnits) {
    Pick("paper", "A5");
    EXPECT_EQ(Line("width") + " " + Line("height"), "148mm 21cm");
    EXPECT_EQ(Note("paper"),
              "The body is 160mm wide, and a page has room for 128mm: it takes further pages at its right");
    Pick("orientation", "Ac");
    EXPECT_EQ(Line("width") + " " + Line("height"), "21cm 148mm");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("<PageHeight>148mm</PageHeight>\n        <PageWidth>21cm</PageWidth>"));
    EXPECT_EQ(m_model.Source().UndoName(), "Set Up Page");
    EXPECT_EQ(m_model.Source().UndoCount(), 1U);
}

TEST_F(PageDialogTest, MarginsAndColumnsAreTyped) {
    Type("right", "1.5");
    Type("columns", "2");
    Type("spacing", "10mm");
    EXPECT_EQ(Note("paper"),
              "The body is 160mm wide, and a page has room for 82.5mm: it takes further pages at its right");
    Ok();
    EXPECT_THAT(Text(), HasSubstr(R"(
        <LeftMargin>2cm</LeftMargin>
        <RightMargin>1.5cm</RightMargin>
        <Columns>2</Columns>
        <ColumnSpacing>10mm</ColumnSpacing>
      </Page>)"));
}

TEST_F(PageDialogTest, AnotherSizeIsAnotherPaper) {
    Type("width", "100mm");
    EXPECT_EQ(The<QComboBox>("paper").currentText(), "Other");
    Type("width", "8.5in");
    Type("height", "11in");
    EXPECT_EQ(The<QComboBox>("paper").currentText(), "Letter");
}

TEST_F(PageDialogTest, WhatCannotBeIsRefused) {
    Type("top", "wide");
    Ok();
    EXPECT_EQ(Note("width"), "\"wide\" is no size: a number with in, cm, mm, pt or pc");
    EXPECT_TRUE(The<QLineEdit>("top").hasFocus());
    Type("top", "-1cm");
    Ok();
    EXPECT_EQ(Note("width"), "-1cm is too small");
    Type("top", "99999cm");
    Ok();
    EXPECT_EQ(Note("width"), "99999cm is too large: the most is 455in");
    Type("top", "30cm");
    Ok();
    EXPECT_EQ(Note("width"), "The margins leave nothing of the height");
    Type("top", "0in");
    Type("left", "11cm");
    Type("right", "10cm");
    Ok();
    EXPECT_EQ(Note("width"), "The margins leave nothing of the width");
    Type("left", "1cm");
    Type("columns", "0");
    Ok();
    EXPECT_EQ(Note("width"), "\"0\" is no number of columns: 1 to 1000");
    EXPECT_EQ(Text(), A4);
}

TEST_F(PageDialogTest, APageThatTheFileDoesNotHaveIsMade) {
    Use(Report(""));
    EXPECT_EQ(The<QComboBox>("paper").currentText(), "Letter");
    Type("top", "1");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("      <Page>\n        <TopMargin>1cm</TopMargin>\n      </Page>\n"));
}

TEST_F(PageDialogTest, AnOldReportHasItsPageElsewhere) {
    Use(R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition">
  <Body>
    <Height>1in</Height>
  </Body>
  <Width>6in</Width>
</Report>)");
    Pick("paper", "Leg");
    Type("columns", "2");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("  <PageHeight>14in</PageHeight>\n"));
    EXPECT_THAT(Text(), HasSubstr("    <Columns>2</Columns>\n  </Body>"));
}

TEST_F(PageDialogTest, AHostileFileDoesNoHarm) {
    const std::string report =
        Report("<Page><PageWidth>wide</PageWidth><PageHeight/><Columns>many</Columns></Page>");
    Use(report);
    EXPECT_EQ(Line("width"), "wide");
    Ok();
    EXPECT_EQ(Text(), report);
}

}  // namespace
}  // namespace designer
