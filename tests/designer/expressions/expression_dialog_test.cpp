// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for expressions, by mouse and keys.
#include "designer/expressions/expression_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <algorithm>

#include "../report_text.h"
#include "../shown_dialog.h"
#include "../window/answered_box.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

std::string Report(const std::string& other = {}) {
    return test::ReportText(
        test::SourceText("Sales", "CSV", "Data Source=sales.csv"),
        test::SetText("Orders", "Sales", test::NoCommand, test::FieldText("Amount", "Amount")),
        test::SectionsText(test::TextboxText("Total", "=1") + other));
}

class ExpressionDialogTest : public test::ShownDialogTest {
 protected:
    explicit ExpressionDialogTest(const std::string& report = Report()) : m_model(Document(report)) {
        Open();
    }

    void Open() {
        const auto& items = m_model.Items().items;
        const ElementId box = std::find_if(items.begin(), items.end(), [](const ReportItem& item) {
                                  return item.name == "Total";
                              })->id;
        const std::vector<PropertyRow> rows = PropertyRowsOf(m_model, box);
        const auto value = std::find_if(rows.begin(), rows.end(),
                                        [](const PropertyRow& row) { return row.property->name == "Value"; });
        Show(std::make_unique<ExpressionDialog>(m_model, std::vector{box}, *value));
    }
    std::string Text() const { return The<QPlainTextEdit>("expression").toPlainText().toStdString(); }
    // What is marked as wrong.
    std::string Marked() const {
        const auto marks = The<QPlainTextEdit>("expression").extraSelections();
        return marks.isEmpty() ? "" : marks.front().cursor.selectedText().toStdString();
    }
    void WaitForNote() const {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !Note("expression").empty(); }));
    }
    std::string Written() const {
        const std::string& text = m_model.Source().Text();
        const std::size_t begin = text.find("<TextRun><Value>") + 16;
        return text.substr(begin, text.find("</Value>", begin) - begin);
    }
    std::string Value() const { return The<QLabel>("value").text().toStdString(); }
    // The names that are offered; none if the list is not there.
    static std::vector<std::string> Offered() {
        const auto* list = qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
        std::vector<std::string> names;
        for (int row = 0; list && row < list->model()->rowCount(); ++row) {
            names.push_back(list->model()->index(row, 0).data().toString().toStdString());
        }
        return names;
    }
    // What a key that is pressed now goes to.
    static QWidget* Target() {
        QWidget* const popup = QApplication::activePopupWidget();
        return popup ? popup : QApplication::focusWidget();
    }
    static void Add(const char* text) {
        for (const char* at = text; *at != 0; ++at) {
            QTest::keyClick(Target(), *at);
        }
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers with = {}) { QTest::keyClick(Target(), key, with); }
    void Find(const char* text) {
        Type("filter", text);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), "filter");
    }

    DesignModel m_model;
};

class ValueOfAnExpression : public ExpressionDialogTest {
 protected:
    ValueOfAnExpression() {
        WriteBytes(m_folder / "sales.csv", "Amount\n20\n22\n");
        m_model.SetFile(m_folder / "sales.rdl");
    }
    std::string ValueOf(const char* expression) {
        Type("expression", expression);
        EXPECT_TRUE(QTest::qWaitFor([this] {
            return !Value().empty() && The<QLabel>("value").isEnabled() && Shown();
        })) << expression;
        m_last = Value();
        return m_last;
    }
    bool Shown() const { return Value() != m_last; }

    const TemporaryFolder m_folder;
    std::string m_last;
};

class ExpressionInAFaultyReport : public ExpressionDialogTest {
 protected:
    ExpressionInAFaultyReport() : ExpressionDialogTest(Report(test::TextboxText("Bad", "=Foo("))) {}
};

TEST_F(ExpressionDialogTest, WhatIsTypedIsCheckedAndItsFaultIsMarked) {
    EXPECT_EQ(Text(), "=1");
    Type("expression", "=1 + Amuont");
    WaitForNote();
    EXPECT_EQ(Note("expression"), "Textbox Total, Value: the name \"Amuont\" is not known, at character 6");
    EXPECT_EQ(Marked(), "A");
    QGuiApplication::clipboard()->setText(QString::fromUtf8("=\"\u00FC\u4E2D\" + Bmuont"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Note("expression").ends_with(" 9"); }));
    EXPECT_EQ(Note("expression"), "Textbox Total, Value: the name \"Bmuont\" is not known, at character 9");
    EXPECT_EQ(Marked(), "B");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "expression");
    Ok();
    EXPECT_TRUE(m_dialog->isVisible());
    Type("expression", "=1 + 2");
    Ok();
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(Written(), "=1 + 2");
    EXPECT_EQ(m_model.Source().UndoName(), "Change Value of Total");
}

TEST_F(ExpressionDialogTest, ANameIsFoundAndInsertedByKeys) {
    Type("expression", "");
    Find("sum(value");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Text(), "=Sum()");
    Find("amount");
    EXPECT_EQ(The<QTreeWidget>("names").currentItem()->text(0), "Fields!Amount.Value");
    EXPECT_EQ(The<QLabel>("help").text(), "Fields!Amount.Value\nA field of Orders");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Text(), "=Sum(Fields!Amount.Value)");
    Ok();
    EXPECT_EQ(Written(), "=Sum(Fields!Amount.Value)");
}

TEST_F(ExpressionDialogTest, TheFilterAlsoFindsTheHelp) {
    Find("reverse order");
    EXPECT_EQ(The<QTreeWidget>("names").currentItem()->text(0), "StrReverse(text)");
    Find("no such name");
    int shown = 0;
    for (QTreeWidgetItemIterator entry(&The<QTreeWidget>("names"), QTreeWidgetItemIterator::NotHidden);
         *entry; ++entry) {
        ++shown;
    }
    EXPECT_EQ(shown, 0);
}

TEST_F(ExpressionDialogTest, ATipIsThePromptOfAParameterAndNoHtml) {
    std::string text = Report();
    text.insert(text.find("</Report>"),
                "<ReportParameters><ReportParameter Name=\"Year\"><Prompt>&lt;img src='a.png'></Prompt>"
                "</ReportParameter></ReportParameters>");
    m_model.SetDocument(Document(text));
    Open();
    Find("!year");
    const QTreeWidgetItem& entry = *The<QTreeWidget>("names").currentItem();
    EXPECT_EQ(entry.text(0), "Parameters!Year.Value");
    EXPECT_THAT(entry.toolTip(0).toStdString(), testing::HasSubstr("&lt;img src='a.png'&gt;"));
    EXPECT_EQ(The<QLabel>("help").text(), "Parameters!Year.Value\n<img src='a.png'>");
}

TEST_F(ExpressionDialogTest, AFieldThatIsNotThereIsNamed) {
    Type("expression", "=Fields!Amuont.Value");
    Ok();
    EXPECT_EQ(Note("expression"),
              "Textbox Total, Value: there is no field \"Amuont\" in data set \"Orders\", at character 9");
    EXPECT_EQ(Written(), "=1");
}

TEST_F(ExpressionDialogTest, WhatStaysAsItIsChangesNothing) {
    Ok();
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(m_model.Source().Text(), Report());
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(ExpressionInAFaultyReport, NothingIsCheckedAndThatIsTold) {
    Type("expression", "=1 +");
    WaitForNote();
    EXPECT_EQ(Note("expression"),
              "Not checked, as the report has another fault: Textbox Bad, Value: the name \"Foo\" is not "
              "known, at character 2");
    Ok();
    EXPECT_EQ(Written(), "=1 +");
}

TEST_F(ExpressionDialogTest, NamesAreOfferedWhileTheyAreTyped) {
    Type("expression", "");
    Add("=1 + fi");
    EXPECT_THAT(Offered(), testing::Contains("Fields!Amount.Value"));
    Add("elds!");
    EXPECT_THAT(Offered(), testing::ElementsAre("Fields!Amount.Value", "Fields!Amount.IsMissing"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Text(), "=1 + Fields!Amount.Value");
    EXPECT_THAT(Offered(), testing::IsEmpty());
    Add(" + user!");
    Press(Qt::Key_Down);
    Press(Qt::Key_Tab);
    EXPECT_EQ(Text(), "=1 + Fields!Amount.Value + User!Language");
    EXPECT_TRUE(m_dialog->isVisible());
}

TEST_F(ExpressionDialogTest, EscapeClosesTheNamesOnly) {
    Type("expression", "");
    Add("=su");
    EXPECT_THAT(Offered(), testing::Contains("Sum(value[, scope])"));
    Press(Qt::Key_Escape);
    EXPECT_THAT(Offered(), testing::IsEmpty());
    EXPECT_TRUE(m_dialog->isVisible());
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_THAT(Offered(), testing::Contains("Sum(value[, scope])"));
    Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_THAT(Offered(), testing::IsEmpty());
    EXPECT_NE(Note("expression"), "") << "Ctrl+Return is OK, which does not take this";
}

TEST_F(ExpressionDialogTest, EscapeClosesTheHelpForArgumentsAndThenAsks) {
    Type("expression", "");
    Add("=mid");
    Press(Qt::Key_Return);
    EXPECT_NE(The<QLabel>("signature").text(), "");
    Press(Qt::Key_Escape);
    EXPECT_EQ(The<QLabel>("signature").text(), "");
    EXPECT_TRUE(m_dialog->isVisible());
    const auto escape = [] { Press(Qt::Key_Escape); };
    EXPECT_EQ(test::Answer(escape, "Keep"), "Discard what was typed here?");
    m_dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    EXPECT_EQ(Text(), "=Mid()");
    Add("\"a\"");
    EXPECT_THAT(The<QLabel>("signature").text().toStdString(), testing::StartsWith("Mid(<b>text</b>"));
    Press(Qt::Key_Escape);
    test::Answer(escape, "Discard");
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(Written(), "=1");
}

TEST_F(ExpressionDialogTest, EscapeClosesWhatIsNotChanged) {
    Press(Qt::Key_Escape);
    EXPECT_FALSE(m_dialog->isVisible());
}

TEST_F(ExpressionDialogTest, NoNamesAreOfferedInATextAndForAConstant) {
    Type("expression", "");
    Add("fields");
    EXPECT_THAT(Offered(), testing::IsEmpty());
    Type("expression", "");
    Add("=\"fields");
    EXPECT_THAT(Offered(), testing::IsEmpty());
    Add("\" & fields");
    EXPECT_THAT(Offered(), testing::Not(testing::IsEmpty()));
}

TEST_F(ExpressionDialogTest, AFunctionIsTakenWithItsBracketsAndShowsItsArguments) {
    Type("expression", "");
    Add("=mid");
    EXPECT_EQ(The<QLabel>("signature").text(), "");
    Press(Qt::Key_Return);
    EXPECT_EQ(Text(), "=Mid()");
    const auto signature = [this] { return The<QLabel>("signature").text().toStdString(); };
    EXPECT_THAT(signature(), testing::StartsWith("Mid(<b>text</b>, start[, count]) - "));
    Add("\"a,b(\", ");
    EXPECT_THAT(signature(), testing::StartsWith("Mid(text, <b>start</b>[, count]) - "));
    Add("len(");
    EXPECT_THAT(signature(), testing::StartsWith("Len(<b>"));
    Add("\"\")");
    EXPECT_THAT(signature(), testing::StartsWith("Mid(text, <b>start</b>["));
    Press(Qt::Key_End);
    EXPECT_EQ(signature(), "");
    // Before a bracket that is there already only the name is taken.
    Press(Qt::Key_Home);
    Press(Qt::Key_Right);
    Press(Qt::Key_Delete);
    Press(Qt::Key_Delete);
    Press(Qt::Key_Delete);
    Add("trim");
    EXPECT_THAT(Offered(), testing::Contains("Trim(text)"));
    Press(Qt::Key_Return);
    EXPECT_THAT(Text(), testing::StartsWith("=Trim(\"a,b(\""));
}

TEST_F(ValueOfAnExpression, IsShownForTheFirstRow) {
    EXPECT_EQ(ValueOf("=Fields!Amount.Value + 1"),
              "21 (Whole number); first row of Orders, totals of all its rows (2)");
    EXPECT_EQ(ValueOf("=Sum(Fields!Amount.Value) / 4"),
              "10.5 (Number); first row of Orders, totals of all its rows (2)");
    EXPECT_EQ(ValueOf("=UCase(\"a\") & vbCrLf & \"b\""), "\"A  b\" (Text)");
    EXPECT_EQ(ValueOf("=CDate(\"2025-03-01\")"), "2025-03-01 (Date)");
    EXPECT_EQ(ValueOf("=Nothing"), "Null");
    EXPECT_EQ(ValueOf("=Split(\"a,b\", \",\")"), "a; b (Several values)");
    EXPECT_EQ(ValueOf("=Globals!PageNumber"),
              "Known in the preview only: pages, other text boxes or groups decide it");
    EXPECT_THAT(ValueOf("=CInt(\"x\")"), testing::StartsWith("#Error: "));
}

TEST_F(ValueOfAnExpression, GoesWithAFaultAndWithAConstant) {
    ValueOf("=2 * 3");
    Type("expression", "=2 * ");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Value().empty(); }));
    ValueOf("=2 * 4");
    Type("expression", "constant");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Value().empty(); }));
    EXPECT_FALSE(The<QAbstractButton>("compute").isEnabled());
}

TEST_F(ValueOfAnExpression, RowsAreReadAgainWhenTheButtonIsPressed) {
    ValueOf("=Max(Fields!Amount.Value)");
    WriteBytes(m_folder / "sales.csv", "Amount\n50\n");
    EXPECT_EQ(ValueOf("=2 * Max(Fields!Amount.Value)"),
              "44 (Whole number); first row of Orders, totals of all its rows (2)");
    Click("compute");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shown(); }));
    EXPECT_EQ(Value(), "100 (Whole number); first row of Orders, totals of all its rows (1)");
}

TEST_F(ValueOfAnExpression, SaysThatThereAreNoRows) {
    WriteBytes(m_folder / "sales.csv", "Amount\n");
    EXPECT_EQ(ValueOf("=Fields!Amount.Value"), "Null; Orders has no rows");
}

TEST_F(ValueOfAnExpression, IsNotThereIfTheDataCannotBeRead) {
    std::filesystem::remove(m_folder / "sales.csv");
    EXPECT_THAT(ValueOf("=Fields!Amount.Value"), testing::HasSubstr("No value: Data set \"Orders\""));
    EXPECT_EQ(ValueOf("=1 + 1"), "2 (Whole number)");
    // It is tried again when the user asks for it.
    WriteBytes(m_folder / "sales.csv", "Amount\n7\n");
    EXPECT_THAT(ValueOf("=1 + Fields!Amount.Value"), testing::StartsWith("No value: Data set \"Orders\""));
    Click("compute");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shown(); }));
    EXPECT_EQ(Value(), "8 (Whole number); first row of Orders, totals of all its rows (1)");
}

}  // namespace
}  // namespace designer
