// SPDX-License-Identifier: GPL-3.0-or-later
#include <QPlainTextEdit>
#include <QTreeWidget>

#include "../tables/small_tables.h"
#include "dialog_test.h"

namespace designer::test {
namespace {

constexpr const char* Group =
    "<TablixMember><Group Name=\"ByRegion\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
    "</GroupExpression></GroupExpressions></"
    "Group><SortExpressions><SortExpression><Value>=Fields!Region.Value"
    "</Value></SortExpression></SortExpressions><TablixMembers><TablixMember/></TablixMembers></TablixMember>"
    "<TablixMember><Group Name=\"Details\"/></TablixMember>";

std::string GroupReport() {
    return Placed(Report(ListTablix(Group)));
}

class GroupDialogTest : public DialogTest {
 protected:
    explicit GroupDialogTest(const std::string& report = GroupReport()) : DialogTest(report) {}
    bool Has(const std::string& text) { return Model().Source().Text().find(text) != std::string::npos; }
    static void Add(QDialog& dialog, const QString& list) {
        QTableWidget& table = Table(dialog, list);
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Insert);
    }
};

TEST_F(GroupDialogTest, ShowsWhatTheGroupHasAndOkChangesNothing) {
    Click(At("A"));
    InDialog("groupProperties", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Group: ByRegion");
        EXPECT_EQ(Pages(dialog), "General|Sorting|Filters|Page Breaks|Visibility|Variables|");
        EXPECT_EQ(List(dialog, "Name").currentText(), "ByRegion");
        EXPECT_EQ(Cells(Table(dialog, "groupExpressions")), "=Fields!Region.Value|");
        EXPECT_EQ(Cells(Table(dialog, "sorts")), "=Fields!Region.Value|Ascending|");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Model().Source().Text(), GroupReport());
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
}

TEST_F(GroupDialogTest, SortsFiltersAndBreaksAreOneStep) {
    Click(At("A"));
    InDialog("groupProperties", [&](QDialog& dialog) {
        TypeCell(Table(dialog, "sorts"), 0, 1, "Descending");
        Add(dialog, "sorts");
        TypeCell(Table(dialog, "sorts"), 1, 0, "net_amount");
        Add(dialog, "filters");
        TypeCell(Table(dialog, "filters"), 0, 0, "Region");
        TypeCell(Table(dialog, "filters"), 0, 2, "North");
        Add(dialog, "groupExpressions");
        TypeCell(Table(dialog, "groupExpressions"), 1, 0, "=Year(Now())");
        Add(dialog, "variables");
        TypeCell(Table(dialog, "variables"), 0, 0, "Best");
        TypeCell(Table(dialog, "variables"), 0, 1, "=Max(Fields!Net_Amount.Value)");
        Type(dialog, "Page break", "Between");
        Type(dialog, "Name", "Areas");
        Type(dialog, "Hidden", "true");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(
        Has("<SortExpressions><SortExpression><Value>=Fields!Region.Value</Value><Direction>Descending"
            "</Direction></SortExpression><SortExpression><Value>=Fields!Net_Amount.Value</Value>"
            "</SortExpression></SortExpressions>"))
        << Model().Source().Text();
    EXPECT_TRUE(
        Has("<Group Name=\"Areas\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
            "</GroupExpression><GroupExpression>=Year(Now())</GroupExpression></GroupExpressions>"
            "<PageBreak><BreakLocation>Between</BreakLocation></PageBreak><Filters><Filter>"
            "<FilterExpression>=Fields!Region.Value</FilterExpression><Operator>Equal</Operator>"
            "<FilterValues><FilterValue>North</FilterValue></FilterValues></Filter></Filters>"
            "<Variables><Variable Name=\"Best\"><Value>=Max(Fields!Net_Amount.Value)</Value>"
            "</Variable></Variables></Group>"))
        << Model().Source().Text();
    EXPECT_TRUE(Has("<Visibility><Hidden>true</Hidden></Visibility>"));
    EXPECT_EQ(UndoName(), "Change group ByRegion");
    Run("editUndo");
    EXPECT_EQ(Model().Source().Text(), GroupReport());
}

TEST_F(GroupDialogTest, WhatIsMissingIsNamed) {
    Click(At("A"));
    InDialog("groupProperties", [&](QDialog& dialog) {
        Add(dialog, "sorts");
        TypeCell(Table(dialog, "sorts"), 1, 0, "Margin");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_EQ(Message(dialog), "\"Margin\" is no field of the data; an expression begins with =");
        TypeCell(Table(dialog, "sorts"), 1, 0, "Region");
        QTableWidget& on = Table(dialog, "groupExpressions");
        on.setCurrentCell(0, 0);
        on.setFocus();
        QTest::keyClick(&on, Qt::Key_Delete, Qt::ControlModifier);
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_EQ(Message(dialog), "A group needs an expression: =Fields!Region.Value");
        Add(dialog, "groupExpressions");
        TypeCell(Table(dialog, "groupExpressions"), 0, 0, "Region");
        Add(dialog, "variables");
        TypeCell(Table(dialog, "variables"), 0, 0, "1st");
        Press(dialog, QDialogButtonBox::Ok);
        EXPECT_EQ(Message(dialog),
                  "\"1st\" is not a valid name: names begin with a letter or _ and continue with letters, "
                  "digits and _");
        EXPECT_TRUE(dialog.isVisible());
        Press(dialog, QDialogButtonBox::Cancel);
    });
    EXPECT_EQ(Model().Source().Text(), GroupReport());
}

TEST_F(GroupDialogTest, DetailsAreSortedAndFiltered) {
    Click(At("C"));
    InDialog("groupProperties", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QTableWidget*>("groupExpressions"), nullptr);
        Add(dialog, "sorts");
        TypeCell(Table(dialog, "sorts"), 0, 0, "Region");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(
        Has("<TablixMember><Group Name=\"Details\"/><SortExpressions><SortExpression><Value>"
            "=Fields!Region.Value</Value></SortExpression></SortExpressions></TablixMember>"))
        << Model().Source().Text();
}

TEST_F(GroupDialogTest, ATableIsSortedAndFiltered) {
    Select({"T"});
    EXPECT_FALSE(Find<QAction>("groupProperties").isEnabled());
    InDialog("tableSortFilter", [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Sort and Filter: T");
        Add(dialog, "sorts");
        TypeCell(Table(dialog, "sorts"), 0, 0, "Net_Amount");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Text("T", "SortExpressions/SortExpression/Value"), "=Fields!Net_Amount.Value");
    EXPECT_EQ(UndoName(), "Sort and filter T");
    InDialog("tableSortFilter", [&](QDialog& dialog) {
        QTableWidget& sorts = Table(dialog, "sorts");
        sorts.setCurrentCell(0, 0);
        QTest::keyClick(&sorts, Qt::Key_Delete, Qt::ControlModifier);
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(Text("T", "SortExpressions"), "-");
}

TEST_F(GroupDialogTest, ADoubleClickInGroupsOpensIt) {
    Click(At("A"));
    auto& groups = Find<QTreeWidget>("groups");
    QTreeWidgetItem* row = groups.topLevelItem(0)->child(0);
    bool isOpen = false;
    QTimer::singleShot(0, m_window, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        isOpen = dialog && dialog->windowTitle() == "Group: ByRegion";
        if (dialog) {
            dialog->reject();
        }
    });
    const QPoint at = groups.visualItemRect(row).center();
    QTest::mouseClick(groups.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(groups.viewport(), Qt::LeftButton, {}, at);
    Settle();
    EXPECT_TRUE(isOpen);
}

TEST_F(GroupDialogTest, ANewGroupHasAButtonForItsExpression) {
    Click(At("C"));
    std::string message;
    QTimer::singleShot(0, m_window, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        QTimer::singleShot(0, dialog, [&] {
            QWidget* inner = QApplication::activeModalWidget();
            auto* text = inner->findChild<QPlainTextEdit*>("expression");
            ASSERT_NE(text, nullptr);
            text->setPlainText("=Year(");
            QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
            message = inner->findChild<QLabel*>("expressionNote")->text().toStdString();
            text->setPlainText("=Fields!Region.Value");
            QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
        });
        QTest::mouseClick(dialog->findChild<QToolButton*>("btnExpression"), Qt::LeftButton);
        EXPECT_EQ(dialog->findChild<QComboBox*>("cboGroupOn")->currentText(), "=Fields!Region.Value");
        dialog->reject();
    });
    Run("groupParent");
    EXPECT_EQ(message, "Tablix T, sort, Value: a value was expected instead of the end, at character 7");
}

// In the schema of 2005 a table sorts its details, and a group has no variables.
class OlderGroupDialogTest : public GroupDialogTest {
 protected:
    static std::string Row(const std::string& name) {
        return "<TableRows><TableRow><TableCells><TableCell><ReportItems><Textbox Name=\"" + name +
               "\"><Value>x</Value></Textbox></ReportItems></TableCell></TableCells><Height>1cm</Height>"
               "</TableRow></TableRows>";
    }
    OlderGroupDialogTest()
        : GroupDialogTest(
              Report("<Table Name=\"T\"><DataSetName>Sales</DataSetName><TableColumns><TableColumn>"
                     "<Width>3cm</Width></TableColumn></TableColumns><TableGroups><TableGroup>"
                     "<Grouping Name=\"G\"><GroupExpressions><GroupExpression>=Fields!Region.Value"
                     "</GroupExpression></GroupExpressions></Grouping><Header>" +
                         Row("H") + "</Header></TableGroup></TableGroups><Details>" + Row("X") +
                         "</Details></Table>",
                     "2005")) {}
};

TEST_F(OlderGroupDialogTest, SortsInItsOwnElements) {
    Click(At("H"));
    InDialog("groupProperties", [&](QDialog& dialog) {
        EXPECT_EQ(Pages(dialog), "General|Sorting|Filters|Page Breaks|Visibility|");
        Add(dialog, "sorts");
        TypeCell(Table(dialog, "sorts"), 0, 0, "Region");
        TypeCell(Table(dialog, "sorts"), 0, 1, "Descending");
        Type(dialog, "Page break after", "true");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(
        Has("<PageBreakAtEnd>true</PageBreakAtEnd></Grouping><Sorting><SortBy><SortExpression>"
            "=Fields!Region.Value</SortExpression><Direction>Descending</Direction></SortBy></Sorting>"
            "<Header>"))
        << Model().Source().Text();
    Select({"T"});
    InDialog("tableSortFilter", [&](QDialog& dialog) {
        Add(dialog, "sorts");
        TypeCell(Table(dialog, "sorts"), 0, 0, "Net_Amount");
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(
        Has("</TableRows><Sorting><SortBy><SortExpression>=Fields!Net_Amount.Value</SortExpression>"
            "</SortBy></Sorting></Details>"))
        << Model().Source().Text();
}

// What a file should not have: thousands of sort expressions, parts that are missing or twice, a style that
// is none.
class HostileGroupTest : public GroupDialogTest {
 protected:
    static std::string Hostile() {
        std::string sorts;
        for (int i = 0; i < 2000; ++i) {
            sorts += "<SortExpression><Value>=1</Value></SortExpression>";
        }
        const std::string group =
            "<TablixMember><Group><GroupExpressions><GroupExpression/><GroupExpression>x</GroupExpression>"
            "</GroupExpressions><Filters><Filter/><Filter><Operator>Never</Operator></Filter></Filters>"
            "<Variables><Variable/><Variable Name=\"\"><Value/></Variable></Variables></Group>"
            "<SortExpressions><SortExpression/><SortExpression><Direction>Sideways</Direction>"
            "</SortExpression>" +
            sorts +
            "</SortExpressions><TablixMembers><TablixMember/></TablixMembers></TablixMember><TablixMember>"
            "<Group Name=\"Details\"/></TablixMember>";
        return With(
            Placed(Report(ListTablix(group))), Box("A", "Region"),
            "<Textbox Name=\"A\"><Paragraphs><Paragraph/></Paragraphs><Style><Border><Style>Wavy</Style>"
            "<Width>-1pt</Width><Color>#zz</Color></Border><Format>\x01</Format></Style><Style/>"
            "</Textbox>");
    }
    HostileGroupTest() : GroupDialogTest(With(Hostile(), "\x01", "{0:\xF0\x9F\x98\x80}")) {}
};

TEST_F(HostileGroupTest, DialogsShowItAndChangeNothing) {
    const std::string before = Model().Source().Text();
    Click(At("A"));
    InDialog("groupProperties", [&](QDialog& dialog) {
        EXPECT_EQ(Table(dialog, "sorts").rowCount(), 2002);
        Press(dialog, QDialogButtonBox::Ok);
    });
    for (const char* command : {"formatStyle", "formatVisibility", "tableSortFilter"}) {
        InDialog(command, [&](QDialog& dialog) { Press(dialog, QDialogButtonBox::Ok); });
    }
    EXPECT_EQ(Model().Source().Text(), before);
    EXPECT_EQ(Model().Source().UndoCount(), 0u);
    Run("formatBold");
    Run("bordersAll");
    EXPECT_EQ(Text("A", "Style/Border/Style"), "Solid");
}

}  // namespace
}  // namespace designer::test
