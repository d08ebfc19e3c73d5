// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for links, document map, tool tip and bookmark, by mouse and keys.
#include "designer/report_dialogs/links_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <algorithm>

#include "../shown_dialog.h"

namespace designer {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Report(const std::string& more, const char* schema = "2010/01") {
    const std::string items = R"(<ReportItems>
          <Image Name="Logo">
            <Source>External</Source>
            <Value>a.png</Value>
)" + more + R"(          </Image>
        </ReportItems>
        <Height>8cm</Height>)";
    const std::string body = "<Body>\n        " + items + "\n      </Body>\n      <Width>16cm</Width>\n";
    const std::string begin = "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/" +
                              std::string(schema) + "/reportdefinition\">\n";
    return std::string(schema) == "2005/01"
               ? begin + "      " + body + "</Report>\n"
               : begin + "  <ReportSections>\n    <ReportSection>\n      " + body +
                     "      <Page/>\n    </ReportSection>\n  </ReportSections>\n</Report>\n";
}

class LinksDialogTest : public test::ShownDialogTest {
 protected:
    void Open(const std::string& report) {
        m_model.SetDocument(Document(report));
        Show(std::make_unique<LinksDialog>(m_model, std::vector{m_model.Items().items.front().id}));
    }
    const std::string& Text() const { return m_model.Source().Text(); }

    DesignModel m_model{Document(Report(""))};
};

const std::string Drill = R"(            <ActionInfo>
              <Actions>
                <Action>
                  <Drillthrough>
                    <ReportName>Detail</ReportName>
                    <Parameters>
                      <Parameter Name="Id">
                        <Value>=1</Value>
                        <Omit>false</Omit>
                      </Parameter>
                    </Parameters>
                  </Drillthrough>
                </Action>
              </Actions>
            </ActionInfo>
)";

TEST_F(LinksDialogTest, OkWithoutAChangeChangesNothing) {
    Open(Report(Drill));
    EXPECT_EQ(The<QComboBox>("kind").currentText(), "Opens another report");
    EXPECT_EQ(The<QLineEdit>("target").text(), "Detail");
    EXPECT_EQ(The<QTableWidget>("linkParameters").item(0, 1)->text(), "=1");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Text(), Report(Drill));
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(LinksDialogTest, EverythingIsAddedInOneStep) {
    Open(Report(""));
    EXPECT_FALSE(The<QWidget>("target").isVisible());
    Pick("kind", "Op");
    Type("target", "https://example.com/a&b");
    Type("label", "The logo");
    Type("toolTip", "Our logo");
    Type("bookmark", "logo");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << Note("target");
    EXPECT_EQ(m_model.Source().UndoName(), "Change Link of Logo");
    EXPECT_EQ(m_model.Source().UndoCount(), 1U);
    EXPECT_THAT(Text(), HasSubstr(R"(
            <ActionInfo>
              <Actions>
                <Action>
                  <Hyperlink>https://example.com/a&amp;b</Hyperlink>
                </Action>
              </Actions>
            </ActionInfo>
            <ToolTip>Our logo</ToolTip>
            <DocumentMapLabel>The logo</DocumentMapLabel>
            <Bookmark>logo</Bookmark>
          </Image>)"));
    m_model.Undo();
    EXPECT_EQ(Text(), Report(""));
}

TEST_F(LinksDialogTest, AParameterChangesAndTheRestOfItStays) {
    Open(Report(Drill));
    auto& cells = The<QTableWidget>("linkParameters");
    cells.setFocus();
    cells.setCurrentCell(0, 1);
    QTest::keyClick(&cells, Qt::Key_F2);
    QTest::keyClicks(QApplication::focusWidget(), "2");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("<Value>2</Value>\n                        <Omit>false</Omit>"));
}

TEST_F(LinksDialogTest, AnotherKindReplacesTheFirst) {
    Open(Report(Drill));
    Pick("kind", "Goes");
    Type("target", "top");
    Ok();
    EXPECT_THAT(Text(),
                HasSubstr("                <Action>\n                  <BookmarkLink>top</BookmarkLink>\n"
                          "                </Action>"));
    EXPECT_THAT(Text(), Not(HasSubstr("Drillthrough")));
    Open(Report(Drill));
    Pick("kind", "Noth");
    Ok();
    EXPECT_EQ(Text(), Report(""));
}

TEST_F(LinksDialogTest, AnOldReportHasItsOwnElements) {
    Open(Report("", "2005/01"));
    Pick("kind", "Op");
    Type("target", "=Globals!ReportName");
    Type("label", "Logo");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << Note("target");
    EXPECT_THAT(
        Text(),
        HasSubstr("            <Action>\n                  <Hyperlink>=Globals!ReportName</Hyperlink>\n"
                  "            </Action>\n            <Label>Logo</Label>\n"));
}

TEST_F(LinksDialogTest, WhatCannotBeIsRefused) {
    Open(Report(""));
    Pick("kind", "Op");
    Ok();
    EXPECT_EQ(Note("target"), "Type where the link leads to, or pick \"Nothing\"");
    EXPECT_TRUE(The<QLineEdit>("target").hasFocus());
    Type("target", "=Fields!Nothing.Value");
    Ok();
    EXPECT_THAT(Note("target"), HasSubstr("Image Logo"));
    QTest::keyClick(&The<QComboBox>("kind"), Qt::Key_End);
    Type("target", "Detail");
    The<QTableWidget>("linkParameters").setFocus();
    QTest::keyClick(&The<QTableWidget>("linkParameters"), Qt::Key_Insert);
    QTest::keyClicks(QApplication::focusWidget(), "a b");
    Ok();
    EXPECT_EQ(Note("target"), "\"a b\" is no name of a parameter");
    EXPECT_EQ(Text(), Report(""));
}

}  // namespace
}  // namespace designer
