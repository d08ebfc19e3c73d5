// SPDX-License-Identifier: GPL-3.0-or-later
// The preview: its parameters, a run in the background, and what leads from an error to its item.
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <chrono>

#include "designer/window/window_fixture.h"
#include "platform/viewer/report_viewer.h"

namespace designer::test {
namespace {

std::string Parameter(const std::string& name, const std::string& type, const std::string& rest) {
    return "<ReportParameter Name=\"" + name + "\"><DataType>" + type + "</DataType>" + rest + "<Prompt>" +
           name + "</Prompt></ReportParameter>";
}

std::string Choice(const std::string& value, const std::string& label) {
    return "<ParameterValue><Value>" + value + "</Value><Label>" + label + "</Label></ParameterValue>";
}

// A report over a file of rows, with a text box that shows the expression.
std::string Report(const std::string& parameters, const std::string& expression,
                   const std::string& source =
                       "<DataProvider>CSV</DataProvider><ConnectString>Data Source=rows.csv</ConnectString>",
                   const std::string& query = "") {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <DataSources><DataSource Name="Rows"><ConnectionProperties>)" +
           source + R"(</ConnectionProperties></DataSource></DataSources>
  <DataSets><DataSet Name="Regions"><Query><DataSourceName>Rows</DataSourceName><CommandText>)" +
           query + R"(</CommandText></Query><Fields>
    <Field Name="Code"><DataField>code</DataField></Field><Field Name="Full"><DataField>full</DataField></Field>
  </Fields></DataSet></DataSets>
  <ReportParameters>)" +
           parameters + R"(</ReportParameters>
  <ReportSections><ReportSection><Body><ReportItems><Textbox Name="Shown">
    <Paragraphs><Paragraph><TextRuns><TextRun><Value>)" +
           expression + R"(</Value></TextRun></TextRuns></Paragraph></Paragraphs>
    <Height>1cm</Height><Width>15cm</Width></Textbox></ReportItems><Height>8cm</Height></Body>
    <Width>16cm</Width><Page><PageHeight>29.7cm</PageHeight><PageWidth>21cm</PageWidth></Page>
  </ReportSection></ReportSections>
</Report>
)";
}

class Preview : public WindowTest {
 protected:
    void Open(const std::string& bytes) {
        WriteBytes(m_home / "rows.csv", "code,full\nN,North\nS,South\nN,North\n");
        WriteBytes(File(), bytes);
        ASSERT_TRUE(m_window->OpenFile(File()));
        Run("viewPreview");
    }
    ReportViewer& Viewer() { return Find<ReportViewer>("preview"); }
    bool Shows() {
        return QTest::qWaitFor([&] { return Viewer().CurrentPage() == 1 && !Find("cmdStop").isVisible(); },
                               10000);
    }
    // The text of the page that is shown.
    QString PageText() {
        EXPECT_TRUE(Shows());
        QGuiApplication::clipboard()->clear();
        QWidget* pages = Viewer().findChild<QWidget*>("pages");
        pages->actions().at(1)->trigger();
        pages->actions().at(0)->trigger();
        return QGuiApplication::clipboard()->text().trimmed();
    }
    void RunReport() { QTest::mouseClick(&Find<QAbstractButton>("cmdViewReport"), Qt::LeftButton); }
    template <typename T>
    T& Field(const char* name) {
        return Find<T>((std::string("parameter") + name).c_str());
    }
};

TEST_F(Preview, ParametersWithDefaultsRunAtOnceAndStayAboveThePages) {
    Open(Report(
        Parameter("City", "String", "<DefaultValue><Values><Value>Oslo</Value></Values></DefaultValue>"),
        "=Parameters!City.Value"));
    EXPECT_EQ(PageText(), "Oslo");
    EXPECT_TRUE(Field<QLineEdit>("City").isVisible());
    Field<QLineEdit>("City").setText("Rome");
    QTest::keyClick(&Field<QLineEdit>("City"), Qt::Key_Return);
    EXPECT_EQ(PageText(), "Rome");
    Run("viewDesign");
    Run("viewPreview");
    EXPECT_EQ(PageText(), "Rome");  // what was typed stays
}

TEST_F(Preview, AParameterWithoutADefaultIsAskedFor) {
    Open(Report(Parameter("Number", "Integer", ""), "=Parameters!Number.Value * 2"));
    EXPECT_EQ(Viewer().CurrentPage(), 0);
    EXPECT_TRUE(Field<QLineEdit>("Number").hasFocus());
    QTest::keyClicks(&Field<QLineEdit>("Number"), "many");
    RunReport();
    auto& errors = Find<QListWidget>("previewErrors");
    EXPECT_TRUE(errors.isVisible());
    EXPECT_EQ(errors.item(0)->text().toStdString(),
              "Type mismatch: Parameter \"Number\": \"many\" is not a whole number");
    EXPECT_TRUE(Field<QLineEdit>("Number").hasFocus());
    Field<QLineEdit>("Number").setText("21");
    RunReport();
    EXPECT_EQ(PageText(), "42");
    EXPECT_FALSE(errors.isVisible());
}

TEST_F(Preview, AValueIsChosenByItsLabel) {
    Open(Report(Parameter("Region", "String",
                          "<ValidValues><ParameterValues>" + Choice("N", "North") + Choice("S", "South") +
                              "</ParameterValues></ValidValues>"),
                "=Parameters!Region.Value &amp; \" \" &amp; Parameters!Region.Label"));
    auto& box = Field<QComboBox>("Region");
    EXPECT_EQ(box.currentText(), "");
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.currentText(), "South");
    RunReport();
    EXPECT_EQ(PageText(), "S South");
}

TEST_F(Preview, AllowedValuesComeFromTheRowsOfADataSet) {
    Open(Report(Parameter("Region", "String",
                          "<ValidValues><DataSetReference><DataSetName>Regions</DataSetName><ValueField>Code"
                          "</ValueField><LabelField>Full</LabelField></DataSetReference></ValidValues>"),
                "=Parameters!Region.Value"));
    auto& box = Field<QComboBox>("Region");
    ASSERT_EQ(box.count(), 2);
    EXPECT_EQ(box.itemText(1), "South");
    box.setCurrentIndex(1);
    RunReport();
    EXPECT_EQ(PageText(), "S");
}

TEST_F(Preview, SeveralValuesAreTickedOrTypedOneALine) {
    Open(Report(Parameter("Regions", "String",
                          "<ValidValues><ParameterValues>" + Choice("N", "North") + Choice("S", "South") +
                              "</ParameterValues></ValidValues><MultiValue>true</MultiValue>") +
                    Parameter("Numbers", "Integer", "<MultiValue>true</MultiValue>"),
                "=Join(Parameters!Regions.Value, &quot;+&quot;) &amp; &quot; &quot; &amp; "
                "Join(Parameters!Numbers.Value, &quot;+&quot;)"));
    auto& list = Field<QListWidget>("Regions");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&Field<QPlainTextEdit>("Numbers"), "3");
    QTest::keyClick(&Field<QPlainTextEdit>("Numbers"), Qt::Key_Return);
    QTest::keyClicks(&Field<QPlainTextEdit>("Numbers"), "4");
    RunReport();
    EXPECT_EQ(PageText(), "N+S 3+4");
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_EQ(list.item(0)->checkState(), Qt::Unchecked);
    RunReport();
    EXPECT_EQ(PageText(), "S 3+4");
}

TEST_F(Preview, NullIsTicked) {
    Open(Report(Parameter("Number", "Integer", "<Nullable>true</Nullable>"),
                "=IIf(IsNothing(Parameters!Number.Value), &quot;none&quot;, Parameters!Number.Value)"));
    auto& null = Find<QCheckBox>("nullNumber");
    EXPECT_TRUE(null.isChecked());
    EXPECT_FALSE(Field<QLineEdit>("Number").isEnabled());
    EXPECT_EQ(PageText(), "none");
    QTest::mouseClick(&null, Qt::LeftButton);
    Field<QLineEdit>("Number").setText("7");
    RunReport();
    EXPECT_EQ(PageText(), "7");
}

// A whole number, or Null, with this default.
std::string NumberOrNull(const std::string& value) {
    return Parameter("Number", "Integer",
                     "<Nullable>true</Nullable><DefaultValue><Values><Value>" + value +
                         "</Value></Values></DefaultValue>");
}

TEST_F(Preview, ADefaultThatIsNotTakenIsAFaultAsInARun) {
    Open(Report(NumberOrNull("abc"), "=Parameters!Number.Value"));
    EXPECT_FALSE(Find<QCheckBox>("nullNumber").isChecked());
    auto& errors = Find<QListWidget>("previewErrors");
    ASSERT_TRUE(QTest::qWaitFor([&] { return errors.count() > 0; }));
    EXPECT_EQ(errors.item(0)->text().toStdString(), "Parameter \"Number\": \"abc\" is not a whole number");
}

TEST_F(Preview, ADefaultOfNullIsTicked) {
    Open(Report(NumberOrNull("=Nothing"), "=IIf(IsNothing(Parameters!Number.Value), &quot;none&quot;, 1)"));
    EXPECT_TRUE(Find<QCheckBox>("nullNumber").isChecked());
    EXPECT_EQ(PageText(), "none");
}

TEST_F(Preview, TheWindowLivesWhileALongQueryRunsAndStops) {
    WriteBytes(m_home / "store.db", "");
    Open(Report("", "=Sum(Fields!Code.Value, &quot;Regions&quot;)",
                "<DataProvider>SQLite</DataProvider><ConnectString>Data Source=store.db</ConnectString>",
                "with recursive n(code) as (select 1 union all select code + 1 from n) "
                "select count(*) as code, 1 as full from n"));
    auto& stop = Find<QAbstractButton>("cmdStop");
    EXPECT_TRUE(stop.isVisible());
    EXPECT_EQ(Find<QLabel>("previewState").text(), "The report is running");
    Run("viewDesign");
    Click(At("Shown"));
    EXPECT_EQ(Selected(), "Shown");
    Run("viewPreview");
    QTest::mouseClick(&stop, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !stop.isVisible(); }, 5000));
    EXPECT_EQ(Find<QLabel>("previewState").text(), "Stopped after 0 page(s). F5 runs the report again");
    EXPECT_FALSE(Find<QListWidget>("previewErrors").isVisible());
}

TEST_F(Preview, AWindowClosesWhileAQueryRuns) {
    WriteBytes(m_home / "store.db", "");
    Open(Report("", "=Sum(Fields!Code.Value, &quot;Regions&quot;)",
                "<DataProvider>SQLite</DataProvider><ConnectString>Data Source=store.db</ConnectString>",
                "with recursive n(code) as (select 1 union all select code + 1 from n) "
                "select count(*) as code, 1 as full from n"));
    EXPECT_TRUE(Find("cmdStop").isVisible());
    const auto begin = std::chrono::steady_clock::now();
    delete m_window;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST_F(Preview, AnErrorLeadsToItsItem) {
    Open(Report("", "=1+"));
    auto& errors = Find<QListWidget>("previewErrors");
    ASSERT_TRUE(errors.isVisible());
    QTest::mouseClick(errors.viewport(), Qt::LeftButton, {}, errors.visualItemRect(errors.item(0)).center());
    EXPECT_TRUE(Canvas().isVisible());
    EXPECT_EQ(Selected(), "Shown");
}

TEST_F(Preview, ThousandsOfParametersAreNotAllAsked) {
    std::string parameters;
    for (int i = 0; i < 3000; ++i) {
        parameters += Parameter("P" + std::to_string(i), "String",
                                "<DefaultValue><Values><Value>x</Value></Values></DefaultValue>");
    }
    Open(Report(parameters, "=Parameters!P2999.Value"));
    EXPECT_EQ(PageText(), "x");
    EXPECT_NE(m_window->findChild<QWidget*>("parameterP199"), nullptr);
    EXPECT_EQ(m_window->findChild<QWidget*>("parameterP200"), nullptr);
}

}  // namespace
}  // namespace designer::test
