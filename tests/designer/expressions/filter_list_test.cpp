// SPDX-License-Identifier: GPL-3.0-or-later
// The list of filters, by mouse and keys.
#include "designer/expressions/filter_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTimer>
#include <QToolButton>

#include "../report_text.h"
#include "../shown_dialog.h"
#include "designer/document/editing.h"

namespace designer {
namespace {

using testing::HasSubstr;

const std::string Report =
    test::ReportText(test::SourceText("Sales", "CSV", "Data Source=sales.csv"),
                     test::SetText("Orders", "Sales", test::NoCommand,
                                   test::FieldText("Amount", "Amount") + test::FieldText("City", "City"),
                                   R"(      <Filters>
        <Filter> <!-- dear ones -->
          <FilterExpression>=Fields!Amount.Value</FilterExpression>
          <Operator>GreaterThan</Operator>
          <FilterValues><FilterValue DataType="Integer">100</FilterValue></FilterValues>
        </Filter>
        <Filter>
          <FilterExpression>=Fields!City.Value</FilterExpression>
          <Operator>In</Operator>
          <FilterValues>
            <FilterValue>Ulm</FilterValue>
            <FilterValue>Bonn</FilterValue>
          </FilterValues>
        </Filter>
      </Filters>
)"),
                     test::SectionsText(""));

class FilterListTest : public testing::Test, protected fakes::FormDriver {
 protected:
    FilterListTest() : m_model(Document(Report)) {
        Show();
        m_list.resize(800, 300);
        m_list.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_list));
    }
    void Show() { m_list.ShowFilters(Set(), {"Amount", "City"}); }
    ElementId Set() const { return m_model.Source().Find(m_model.Source().Root(), "DataSets/DataSet"); }
    QWidget* Form() const override { return const_cast<FilterList*>(&m_list); }
    QTableWidget& Table() const { return The<QTableWidget>("filters"); }
    void TypeCell(int row, int column, const char* text) const {
        test::TypeInCell(Table(), row, column, text);
    }
    void Press(const char* button) const { QTest::mouseClick(&The<QToolButton>(button), Qt::LeftButton); }
    std::string Note() const { return The<QLabel>("filtersNote").text().toStdString(); }
    std::string Put() {
        m_model.Edit("Filter", [&](Document& document) { PutFilters(document, Set(), m_list.Filters()); });
        return m_model.Source().Text();
    }

    DesignModel m_model;
    FilterList m_list{m_model};
};

TEST_F(FilterListTest, WhatIsNotTouchedStays) {
    EXPECT_EQ(Table().rowCount(), 2);
    EXPECT_EQ(Table().columnCount(), 5);  // In may have one more value
    EXPECT_EQ(Table().item(1, 3)->text(), "Bonn");
    EXPECT_TRUE(m_list.IsComplete());
    EXPECT_EQ(Put(), Report);
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(FilterListTest, AFilterIsAddedAndChangedInPlace) {
    Table().setFocus();
    Table().setCurrentCell(1, 0);
    Press("filtersAdd");
    QTest::keyClicks(QApplication::focusWidget(), "city");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(m_list.IsComplete());
    EXPECT_EQ(Note(), "Filter 3: the value is missing");
    EXPECT_EQ(Table().currentRow(), 2);
    EXPECT_EQ(Table().currentColumn(), 2);
    TypeCell(2, 2, "Bonn");
    EXPECT_EQ(Note(), "");
    EXPECT_TRUE(m_list.IsComplete());
    EXPECT_THAT(Put(), HasSubstr(R"(
        <Filter>
          <FilterExpression>=Fields!City.Value</FilterExpression>
          <Operator>Equal</Operator>
          <FilterValues>
            <FilterValue>Bonn</FilterValue>
          </FilterValues>
        </Filter>
      </Filters>)"));
    m_model.Undo();
    EXPECT_EQ(m_model.Source().Text(), Report);
}

TEST_F(FilterListTest, TheComparisonIsPickedFromAList) {
    Table().setFocus();
    Table().setCurrentCell(0, 1);
    QTest::keyClick(&Table(), Qt::Key_F2);
    auto* list = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_TRUE(list);
    EXPECT_EQ(list->count(), 13);
    QTest::keyClicks(list, "Bet");
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_FALSE(m_list.IsComplete());
    EXPECT_EQ(Note(), "Filter 1: Between needs two values");
    TypeCell(0, 3, "200");
    EXPECT_TRUE(m_list.IsComplete());
    const std::string text = Put();
    EXPECT_THAT(text, HasSubstr("<Operator>Between</Operator>"));
    EXPECT_THAT(text, HasSubstr("<FilterValue DataType=\"Integer\">100</FilterValue>"));
    EXPECT_THAT(text, HasSubstr("<FilterValue>200</FilterValue>"));
    EXPECT_THAT(text, HasSubstr("<!-- dear ones -->"));
}

TEST_F(FilterListTest, TheCaseOfAComparisonDoesNotMatter) {
    m_model.Edit("Filter", [&](Document& document) {
        SetText(document, document.Find(Set(), "Filters/Filter"), "Operator", "between");
    });
    Show();
    TypeCell(0, 3, "200");
    EXPECT_TRUE(m_list.IsComplete()) << Note();
    EXPECT_THAT(Put(), HasSubstr("<FilterValue>200</FilterValue>"));
}

TEST_F(FilterListTest, WhatCannotBeIsRefused) {
    TypeCell(0, 0, "Amuont");
    EXPECT_FALSE(m_list.IsComplete());
    EXPECT_EQ(Note(), "Filter 1: \"Amuont\" is no field of the data; an expression begins with =");
    TypeCell(0, 0, "");
    EXPECT_FALSE(m_list.IsComplete());
    EXPECT_EQ(Note(), "Filter 1: what is compared is missing: a field or an expression");
    TypeCell(0, 0, "=1");
    TypeCell(0, 3, "2");
    EXPECT_FALSE(m_list.IsComplete());
    EXPECT_EQ(Note(), "Filter 1: GreaterThan takes one value");
}

TEST_F(FilterListTest, RowsAreMovedAndRemovedByKeys) {
    Table().setFocus();
    Table().setCurrentCell(0, 0);
    QTest::keyClick(&Table(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Table().currentRow(), 1);
    std::string text = Put();
    EXPECT_LT(text.find("Fields!City.Value"), text.find("Fields!Amount.Value"));
    m_model.Undo();
    QTest::keyClick(&Table(), Qt::Key_Delete, Qt::ControlModifier);
    text = Put();
    EXPECT_EQ(text.find("dear ones"), std::string::npos);
    EXPECT_THAT(text, HasSubstr("Fields!City.Value"));
    m_model.Undo();
    QTest::keyClick(&Table(), Qt::Key_Delete, Qt::ControlModifier);
    text = Put();
    EXPECT_EQ(text.find("Filter"), std::string::npos);
}

TEST_F(FilterListTest, AnExpressionIsCheckedWhereItStands) {
    Table().setFocus();
    Table().setCurrentCell(0, 2);
    EXPECT_TRUE(The<QToolButton>("filtersFx").isEnabled());
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        auto* text = dialog->findChild<QPlainTextEdit*>("expression");
        EXPECT_EQ(text->toPlainText(), "100");
        text->setPlainText("=Fields!Amuont.Value");
        QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
        EXPECT_THAT(dialog->findChild<QLabel*>("expressionNote")->text().toStdString(), HasSubstr("Amuont"));
        text->setPlainText("=50+50");
        QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
    });
    QTest::keyClick(&Table(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(Table().item(0, 2)->text(), "=50+50");
    Table().setCurrentCell(0, 1);
    EXPECT_FALSE(The<QToolButton>("filtersFx").isEnabled());
}

}  // namespace
}  // namespace designer
