// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the report's own functions, by keys.
#include "designer/report_dialogs/code_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <regex>
#include <set>

#include "../shown_dialog.h"
#include "../window/answered_box.h"
#include "designer/report_dialogs/code_editor.h"
#include "support/source_dir.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Report(const std::string& code, const std::string& value = "=1") {
    return R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
          <Textbox Name="Total">
            <Paragraphs><Paragraph><TextRuns><TextRun><Value>)" +
           value +
           R"(</Value></TextRun></TextRuns></Paragraph></Paragraphs>
          </Textbox>
        </ReportItems>
        <Height>8cm</Height>
      </Body>
      <Width>16cm</Width>
      <Page/>
    </ReportSection>
  </ReportSections>
)" + code + "</Report>\n";
}

const std::string Twice =
    "  <Code><![CDATA[Function Twice(n As Integer) As Integer\r\n"
    "    Return 2 * n ' or n & n < 3\r\nEnd Function]]></Code>\n";

class CodeDialogTest : public test::ShownDialogTest {
 protected:
    void Open(const std::string& report) {
        m_model.SetDocument(Document(report));
        Show(std::make_unique<CodeDialog>(m_model));
    }
    CodeEditor& Editor() const { return The<CodeEditor>("code"); }
    const std::string& Text() const { return m_model.Source().Text(); }

    DesignModel m_model{Document(Report(""))};
};

TEST_F(CodeDialogTest, OkWithoutAChangeChangesNothing) {
    Open(Report(Twice));
    EXPECT_EQ(Editor().lines(), 3);
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Text(), Report(Twice));
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(CodeDialogTest, EscapeAsksBeforeWhatIsTypedIsLost) {
    Open(Report(Twice));
    const auto escape = [this] { QTest::keyClick(&Editor(), Qt::Key_Escape); };
    escape();
    EXPECT_FALSE(m_dialog->isVisible());
    Open(Report(Twice));
    QTest::keyClicks(&Editor(), "x");
    EXPECT_EQ(test::Answer(escape, "Keep"), "Discard what was typed here?");
    EXPECT_TRUE(m_dialog->isVisible());
    test::Answer(escape, "Discard");
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(Text(), Report(Twice));
}

TEST_F(CodeDialogTest, LinesAreTypedAndIndentedAsTheOneBefore) {
    Open(Report(""));
    for (const char* line : {"Function Half(n As Double) As Double", "    Return n / 2"}) {
        QTest::keyClicks(&Editor(), line);
        QTest::keyClick(&Editor(), Qt::Key_Return);
    }
    QTest::keyClick(&Editor(), Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClicks(&Editor(), "End Function");
    QTest::keyClick(&Editor(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << Note("code");
    EXPECT_THAT(Text(), HasSubstr("  <Code>Function Half(n As Double) As Double\n    Return n / 2\n"
                                  "End Function</Code>\n</Report>"));
    EXPECT_EQ(m_model.Source().UndoName(), "Change Code");
}

TEST_F(CodeDialogTest, AFaultIsShownAtItsLine) {
    Open(Report(Twice));
    Editor().setCursorPosition(1, 0);
    QTest::keyClicks(&Editor(), "Retrn 1 +");
    QTest::qWait(500);
    EXPECT_EQ(Editor().MarkedLine(), 2);
    EXPECT_EQ(Note("code"),
              "Code, line 2: \"Retrn\" is no statement that the code of a report can use, and no variable "
              "or function of it");
    Editor().setCursorPosition(0, 0);
    Ok();
    EXPECT_TRUE(m_dialog->isVisible());
    int line = 0, column = 0;
    Editor().getCursorPosition(&line, &column);
    EXPECT_EQ(line, 1);
    EXPECT_TRUE(Editor().hasFocus());
    EXPECT_EQ(Text(), Report(Twice));
}

TEST_F(CodeDialogTest, CDataStaysAndAnEmptyCodeGoes) {
    Open(Report(Twice));
    Editor().setCursorPosition(2, 0);
    QTest::keyClicks(&Editor(), "' done");
    QTest::keyClick(&Editor(), Qt::Key_Return);
    Ok();
    EXPECT_THAT(Text(), HasSubstr("<Code><![CDATA[Function Twice"));
    EXPECT_THAT(Text(), HasSubstr("' done\n"));
    Open(Report(Twice));
    QTest::keyClick(&Editor(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Editor(), Qt::Key_Delete);
    Ok();
    EXPECT_THAT(Text(), Not(HasSubstr("Code")));
}

TEST_F(CodeDialogTest, AFunctionThatIsUsedIsMissed) {
    Open(Report(Twice, "=Code.Twice(3)"));
    QTest::keyClick(&Editor(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Editor(), Qt::Key_Delete);
    QTest::qWait(500);
    EXPECT_EQ(Note("code"), "Textbox Total, Value: the report has no code of its own, at character 7");
}

TEST_F(CodeDialogTest, AFaultElsewhereIsNoReasonToRefuse) {
    Open(Report(Twice, "=Nonsense("));
    QTest::keyClicks(&Editor(), "' once");
    QTest::keyClick(&Editor(), Qt::Key_Return);
    QTest::qWait(500);
    EXPECT_THAT(Note("code"), HasSubstr("Not checked, as the report has another fault: "));
    test::Answer([this] { QTest::keyClick(&Editor(), Qt::Key_Escape); }, "Discard");
    EXPECT_FALSE(m_dialog->isVisible());
}

// The words that the engine's parser asks for are coloured.
TEST(CodeEditorWords, AreThoseOfTheParser) {
    const std::string editor = ReadBytes(SourceDir() + "/src/designer/report_dialogs/code_editor.cpp");
    const std::size_t first = editor.find(" Words = {");
    ASSERT_NE(first, std::string::npos);
    const std::string list = editor.substr(first, editor.find("};", first) - first);
    const std::set<std::string> noKeywords = {"array", "null", "nullable", "oninit"};
    const std::regex call("(?:TakeWord|IsWord|AtWords|BlockUntil|lower ==)[ ({]*((?:[{} ,]*\"[a-z]+\")+)"),
        word("\"([a-z]+)\"");
    int count = 0;
    for (const char* const file :
         {"code/parser", "code/parser_statements", "code/parser_assign", "language/parser"}) {
        const std::string source = ReadBytes(SourceDir() + "/src/rdl/expr/" + file + ".cpp");
        for (std::sregex_iterator at(source.begin(), source.end(), call), end; at != end; ++at) {
            const std::string words = (*at)[1];
            for (std::sregex_iterator one(words.begin(), words.end(), word); one != end; ++one, ++count) {
                const std::string quoted = (*one)[0];
                EXPECT_TRUE(list.find(quoted) != std::string::npos || noKeywords.contains((*one)[1]))
                    << file << ": " << quoted;
            }
        }
    }
    EXPECT_GT(count, 80);
}

}  // namespace
}  // namespace designer
