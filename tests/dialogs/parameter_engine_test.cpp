// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter dialog on report files of the real engine.
#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

#include "dialogs/frmPar.h"
#include "platform/controls/combo_box.h"
#include "platform/reports/report_folder.h"
#include "shared/Global.h"
#include "support/fakes.h"
#include "support/modal.h"

namespace {

using Texts = std::vector<std::string>;

std::string Default(const std::string& values) {
    return "<DefaultValue><Values>" + values + "</Values></DefaultValue>";
}

class ParametersOfFiles : public reports::test::ReportFolder {
 protected:
    void SetUp() override {
        ReportFolder::SetUp();
        report::SetEngineFactory(&reports::CreateRdlEngine);
        Global::ReportEngine.reset();
        Global::ParCaller = "frmViewer";
    }
    void TearDown() override {
        Global::CurrentReport.reset();
        Global::ReportEngine.reset();
        report::SetEngineFactory(nullptr);
        ReportFolder::TearDown();
    }
    void Open(const std::string& parameters) const {
        Global::OpenReport(Write("people.rpt", PeopleReport(Parameters(parameters))));
    }
    static void Show(const std::function<void(frmPar&)>& act) {
        fakes::WhileModal<frmPar>([] { frmPar::ShowModal(); }, act);
    }
    static ComboBox& Box(const frmPar& form, const char* name) { return *form.findChild<ComboBox*>(name); }
    static void ClickOK(const frmPar& form) {
        QTest::mouseClick(form.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    }

    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
};

}  // namespace

TEST_F(ParametersOfFiles, DefaultsOfEveryTypeAreTakenBackAsTheyWereShown) {
    Global::ParCaller = "";
    Open(Parameter("Year", "Integer", Default("<Value>2025</Value>")) +
         Parameter("Rate", "Float", Default("<Value>1.5</Value>")) +
         Parameter("Open", "Boolean", Default("<Value>true</Value>")) +
         Parameter("Region", "String", Default("<Value>O'Hara</Value>")) +
         Parameter("Day", "DateTime", Default("<Value>2025-03-01</Value>")) +
         Parameter("From", "DateTime", Default("<Value>2025-03-01T14:30:00</Value>")) +
         Parameter("Sizes", "String",
                   "<MultiValue>true</MultiValue>" + Default("<Value>S</Value><Value>M</Value>")));
    Show([](frmPar& form) {
        EXPECT_EQ(Box(form, "cmbSizes").ListCount(), 2);
        ClickOK(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(Global::ParNames, (Texts{"", "Year", "Rate", "Open", "Region", "Day", "From", "Sizes"}));
    EXPECT_EQ(Global::ParValues,
              (Texts{"", "2025", "1.5", "True", "OHara", "2025-03-01", "2025-03-01 14:30:00", "S"}));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ParametersOfFiles, ValuesReachTheRun) {
    Open(Parameter("Least", "Integer"));
    Global::OpenedReport().SetRecordSelectionFormula("{People.Number} >= {?Least}");
    Show([](frmPar& form) {
        QTest::keyClicks(&Box(form, "cmbLeast"), "2");
        ClickOK(form);
    });
    report::Report& report = Global::OpenedReport();
    report.SetExportDestination(report::DestinationDisk);
    report.SetExportFormat(report::CodeOf(report::DocumentFormat::Html));
    report.SetHtmlFileName(Path("out.htm"));
    report.Export(false);
    const std::string html = Read("out.htm");
    EXPECT_EQ(html.find("Ann"), std::string::npos);
    EXPECT_NE(html.find("Bob"), std::string::npos);
    EXPECT_NE(html.find("Cleo"), std::string::npos);
}

// The engine's text follows the text of the run-time error.
TEST_F(ParametersOfFiles, FractionForAWholeNumberFailsInTheEngine) {
    Open(Parameter("Year", "Integer"));
    Show([](frmPar& form) {
        QTest::keyClicks(&Box(form, "cmbYear"), "2.5");
        ClickOK(form);
    });
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text,
              "The value \"2.5\" of the parameter \"Year\" is not a whole number. Type mismatch: Parameter "
              "\"Year\": \"2.5\" is not a whole number [13]");
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(ParametersOfFiles, FractionIsReadAsANumberOnlyWhereTheReportTakesOne) {
    Open(Parameter("Year", "Integer") + Parameter("Rate", "Float"));
    Show([](frmPar& form) {
        const auto& year = *form.findChild<QLabel*>("iReading1");
        QTest::keyClicks(&Box(form, "cmbYear"), "12");
        EXPECT_EQ(year.text(), "12");
        QTest::keyClicks(&Box(form, "cmbYear"), ".5");
        EXPECT_EQ(year.text(), "not a whole number");
        QTest::keyClicks(&Box(form, "cmbRate"), "12.5");
        EXPECT_EQ(form.findChild<QLabel*>("iReading2")->text(), "12.5");
    });
}
