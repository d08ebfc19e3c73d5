// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on the data of a report: dialogs that open from the menu and from the pane Report Data.
#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <QTreeWidget>

#include "window_fixture.h"

namespace designer::test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string ReportWithData() {
    std::string text = SmallReport();
    const std::string data = R"(
  <DataSources>
    <DataSource Name="Sales">
      <ConnectionProperties>
        <DataProvider>CSV</DataProvider>
        <ConnectString>Data Source=sales.csv</ConnectString>
      </ConnectionProperties>
    </DataSource>
  </DataSources>
  <DataSets>
    <DataSet Name="Orders">
      <Query>
        <DataSourceName>Sales</DataSourceName>
        <CommandText/>
      </Query>
      <Fields><Field Name="Amount"><DataField>Amount</DataField></Field></Fields>
    </DataSet>
  </DataSets>
  <ReportParameters>
    <ReportParameter Name="Year"><DataType>Integer</DataType><Prompt>Year</Prompt></ReportParameter>
    <ReportParameter Name="Region"><Prompt>Region</Prompt></ReportParameter>
  </ReportParameters>)";
    text.insert(text.find("\n  <ReportSections>"), data);
    const std::string one = "=1+1";
    return text.replace(text.find(one), one.size(), "=Parameters!Year.Value + Sum(Fields!Amount.Value)");
}

class DataCommands : public WindowTest {
 protected:
    DataCommands() : WindowTest(ReportWithData()) {}
    QTreeWidget& Pane() { return Find<QTreeWidget>("reportData"); }
    void GoTo(const QString& text) {
        Pane().setFocus();
        Pane().setCurrentItem(Pane().findItems(text, Qt::MatchExactly | Qt::MatchRecursive).front());
    }
    // Picks an entry of the context menu of the current row by the keys.
    void PickFromMenu(const char* text) {
        QTimer::singleShot(0, [text] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            for (QAction* action : menu->actions()) {
                if (action->text().remove('&') == text) {
                    ASSERT_TRUE(action->isEnabled());
                    menu->setActiveAction(action);
                    QTest::keyClick(menu, Qt::Key_Return);
                    return;
                }
            }
            menu->close();
            FAIL() << text;
        });
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), Pane().mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(&Pane(), &event);
    }
};

TEST_F(DataCommands, EnterOpensWhatCannotBePlaced) {
    const auto enter = [this] { QTest::keyClick(&Pane(), Qt::Key_Return); };
    GoTo("Region");
    EXPECT_EQ(Opened(enter, "name"), "parametersDialog Region");
    GoTo("Orders");
    EXPECT_EQ(Opened(enter, "name"), "dataSetDialog Orders");
    GoTo("Sales");
    EXPECT_EQ(Opened(enter, "name"), "dataSourceDialog Sales");
    Select({"Title"});
    GoTo("Region");
    EXPECT_EQ(Opened(enter, "name"), "none");
    EXPECT_THAT(Model().Source().Text(), HasSubstr("<Value>=Parameters!Region.Value</Value>"));
}

TEST_F(DataCommands, TheContextMenuAddsChangesAndRemoves) {
    GoTo("Region");
    EXPECT_EQ(Opened([this] { PickFromMenu("Change..."); }, "name"), "parametersDialog Region");
    EXPECT_EQ(Opened([this] { PickFromMenu("Add Parameter..."); }, "name"), "parametersDialog Parameter1");
    EXPECT_EQ(Opened([this] { PickFromMenu("Add Data Set..."); }, "name"), "dataSetDialog Rows");
    EXPECT_EQ(Opened([this] { PickFromMenu("Add Data Source..."); }, "name"), "dataSourceDialog Source");
    EXPECT_EQ(Model().Source().UndoCount(), 0U);
    PickFromMenu("Remove");
    EXPECT_THAT(Model().Source().Text(), Not(HasSubstr("Region")));
    EXPECT_EQ(Model().Source().UndoName(), "Remove Region");
}

TEST_F(DataCommands, WhatIsUsedIsNotRemoved) {
    const std::string before = Model().Source().Text();
    GoTo("Year");
    QTest::keyClick(&Pane(), Qt::Key_Delete);
    EXPECT_EQ(Problem(),
              "The parameter Year is used and stays. Textbox Amount: "
              "=Parameters!Year.Value + Sum(Fields!Amount.Value)");
    GoTo("Sales");
    QTest::keyClick(&Pane(), Qt::Key_Delete);
    EXPECT_EQ(Problem(), "The data source Sales is used and stays. DataSet Orders");
    GoTo("Orders");
    QTest::keyClick(&Pane(), Qt::Key_Delete);
    EXPECT_THAT(Problem(), HasSubstr("Orders is used and stays. "));
    EXPECT_THAT(Problem(), HasSubstr("Amount"));
    EXPECT_EQ(Model().Source().Text(), before);
}

TEST_F(DataCommands, WhatIsNotUsedIsRemovedInOneStep) {
    Select({"Amount"});
    QTest::keyClick(&Canvas(), Qt::Key_Delete);
    for (const char* name : {"Orders", "Sales", "Year", "Region"}) {
        GoTo(name);
        QTest::keyClick(&Pane(), Qt::Key_Delete);
        EXPECT_EQ(Model().Source().UndoName(), std::string("Remove ") + name);
    }
    EXPECT_THAT(Model().Source().Text(), Not(HasSubstr("Data")));
    EXPECT_THAT(Model().Source().Text(), Not(HasSubstr("ReportParameters")));
    for (int step = 0; step < 5; ++step) {
        Model().Undo();
    }
    EXPECT_EQ(Model().Source().Text(), ReportWithData());
}

TEST_F(DataCommands, TheMenuOpensADialogForEachPart) {
    const auto trigger = [this](const char* name) {
        return Opened([this, name] { Find<QAction>(name).trigger(); }, "none");
    };
    EXPECT_EQ(trigger("reportDataSource"), "dataSourceDialog -");
    EXPECT_EQ(trigger("reportDataSet"), "dataSetDialog -");
    EXPECT_EQ(trigger("reportPage"), "pageDialog -");
    EXPECT_EQ(trigger("reportPictures"), "picturesDialog -");
    EXPECT_EQ(trigger("reportCode"), "codeDialog -");
    Model().Select({});
    EXPECT_FALSE(Find<QAction>("itemLinks").isEnabled());
    Select({"Title"});
    EXPECT_EQ(trigger("itemLinks"), "linksDialog -");
    EXPECT_EQ(Model().Source().UndoCount(), 0U);
}

TEST_F(DataCommands, TheMenuOpensTheParameters) {
    EXPECT_EQ(Opened([this] { Find<QAction>("reportParameters").trigger(); }, "name"),
              "parametersDialog Year");
}

}  // namespace
}  // namespace designer::test
