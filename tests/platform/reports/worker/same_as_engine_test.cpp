// SPDX-License-Identifier: GPL-3.0-or-later
// Every operation of the contract gives the same result, and the same error, in this process and in another.
#include <gmock/gmock.h>

#include <functional>

#include "platform/contracts/export_formats.h"
#include "platform/contracts/mapi.h"
#include "platform/reports/worker/worker_fixture.h"

namespace reports::worker::test {
namespace {

using testing::HasSubstr;

class SameAsEngine : public WorkerTest {
 protected:
    // Returns what the work makes of a report: its text, or the error's number and description.
    static std::string Outcome(report::Engine& engine, const std::string& path,
                               const std::function<std::string(report::Report&)>& work) {
        try {
            return work(*engine.OpenReport(path));
        } catch (const RuntimeError& error) {
            return std::to_string(error.Number()) + ": " + error.Description();
        }
    }
    // Returns the outcome, which both engines must have.
    std::string Both(const std::string& path, const std::function<std::string(report::Report&)>& work) {
        const std::string here = Outcome(*m_here, path, work);
        EXPECT_EQ(here, Outcome(*m_there, path, work));
        return here;
    }
    std::string BothOf(const std::function<std::string(report::Report&)>& work) {
        return Both(Path("people.rpt"), work);
    }
    std::string BothDo(const std::function<void(report::Report&)>& work) {
        return BothOf([&](report::Report& report) {
            work(report);
            return std::string("done");
        });
    }
    // Exports to a file and returns its bytes.
    std::string Exported(report::Report& report, report::DocumentFormat format) const {
        const std::string file = Path("out");
        report.SetExportDestination(report::DestinationDisk);
        report.SetExportFormat(report::CodeOf(format));
        report.SetDiskFileName(file);
        report.SetHtmlFileName(file);
        report.Export(false);
        std::string bytes = Read("out");
        std::filesystem::remove(file);
        return bytes;
    }

    void SetUp() override {
        WorkerTest::SetUp();
        Write(
            "people.rpt",
            PeopleReport("<Description>Who there is</Description>" +
                         Parameters(Parameter("Year", "Integer",
                                              "<Prompt>Which year?</Prompt><DefaultValue><Values><Value>2025"
                                              "</Value></Values></DefaultValue><ValidValues><ParameterValues>"
                                              "<ParameterValue><Value>2025</Value></ParameterValue>"
                                              "<ParameterValue><Value>2026</Value></ParameterValue>"
                                              "</ParameterValues></ValidValues>") +
                                    Parameter("Price", "Float", "<Nullable>true</Nullable>") +
                                    Parameter("Day", "DateTime", "<Nullable>true</Nullable>") +
                                    Parameter("Yes", "Boolean", "<Nullable>true</Nullable>") +
                                    Parameter("Name", "String", "<Nullable>true</Nullable>"))));
        m_here = CreateRdlEngine();
        m_there = CreateWorkerEngine(Usual());
    }

    std::shared_ptr<report::Engine> m_here, m_there;
};

TEST_F(SameAsEngine, OpenTellsWhatIsWrongWithAFile) {
    const auto nothing = [](report::Report&) { return std::string(); };
    EXPECT_EQ(Both(Path("none.rpt"), nothing), "53: File not found: \"" + Path("none.rpt") + "\"");
    EXPECT_THAT(Both(Write("text.rpt", "no report"), nothing), HasSubstr("-2147206461: "));
    EXPECT_THAT(Both(m_folder.string(), nothing), HasSubstr("75: "));
    EXPECT_THAT(Both("C:\\none.rpt", nothing), HasSubstr("76: "));
    EXPECT_THAT(Both("", nothing), HasSubstr("53: "));
}

TEST_F(SameAsEngine, ReportDescribesItself) {
    EXPECT_EQ(BothOf([](report::Report& report) {
                  return report.Title() + "|" + report.Description() + "|" + report.RecordSelectionFormula() +
                         "|" + std::to_string(report.TableCount()) + "|" +
                         std::to_string(report.ParameterFieldCount());
              }),
              "people|Who there is||0|5");
}

TEST_F(SameAsEngine, ParametersDescribeThemselves) {
    const std::string all = BothOf([](report::Report& report) {
        std::string text;
        for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
            report::ParameterField& field = report.Parameter(n);
            text += field.Name() + " " + std::to_string(field.ValueType()) +
                    (field.IsWholeNumber() ? " whole" : "") + " \"" + field.Prompt() + "\"";
            for (const auto& values : {field.DefaultValues(), field.ValidValues()}) {
                text += " (";
                for (const std::string& value : values) {
                    text += value + " ";
                }
                text += ")";
            }
            text += "; ";
        }
        return text;
    });
    EXPECT_THAT(all, HasSubstr("Year 7 whole \"Which year?\" (2025 ) (2025 2026 ); "));
    EXPECT_THAT(all, HasSubstr("Day 16"));
}

TEST_F(SameAsEngine, ParameterNumbersAreChecked) {
    for (const int n : {0, 6, -1}) {
        EXPECT_EQ(BothDo([n](report::Report& report) { report.Parameter(n); }), "9: Subscript out of range");
    }
}

TEST_F(SameAsEngine, ValuesOfEveryKindAreTaken) {
    EXPECT_EQ(BothDo([](report::Report& report) {
                  report.Parameter(1).ClearCurrentValueAndRange();
                  report.Parameter(1).AddCurrentValue(2026.0);
                  report.Parameter(2).AddCurrentValue(0.25);
                  report.Parameter(3).AddCurrentValue(DateSerial(2026, 11, 22));
                  report.Parameter(4).AddCurrentValue(true);
                  report.Parameter(5).AddCurrentValue(std::string("Ann"));
                  report.Parameter(5).AddCurrentValue(Variant("Bob"));
              }),
              "done");
    EXPECT_THAT(BothDo([](report::Report& report) { report.Parameter(1).AddCurrentValue(1.5); }),
                HasSubstr("13: Type mismatch: "));
    EXPECT_THAT(
        BothDo([](report::Report& report) { report.Parameter(3).AddCurrentValue(Variant("no date")); }),
        HasSubstr("13: Type mismatch: "));
}

TEST_F(SameAsEngine, LogonTellsWhichTableThereIsNot) {
    EXPECT_EQ(BothDo([](report::Report& report) { report.SetTableLogon(1, "", "", "ann", "secret"); }),
              "9: Subscript out of range");
}

TEST_F(SameAsEngine, LogonSetsUserAndPasswordOnly) {
    Write("people.db", "");
    const std::string path =
        Write("db.rpt", DatabaseReport("people.db", "select 'Ann' as Name, 2 as Number"));
    const auto log = [&](const std::string& server) {
        return Both(path, [&](report::Report& report) {
            report.SetTableLogon(1, server, "", "ann", "secret");
            return std::to_string(report.TableCount());
        });
    };
    EXPECT_EQ(log(""), "1");
    EXPECT_EQ(log("other"),
              "5: Data source \"db\": a logon can set user and password only, not server and database");
}

TEST_F(SameAsEngine, EveryFormatHasTheSameDocument) {
    for (const report::FormatRow& row : report::FormatTable) {
        // A second may pass between both: the moment of their making differs in some, and then the length of
        // packed ones by a few bytes.
        const std::string here = Exported(*m_here->OpenReport(Path("people.rpt")), row.format);
        const std::string there = Exported(*m_there->OpenReport(Path("people.rpt")), row.format);
        const bool packed =
            row.format == report::DocumentFormat::Docx || row.format == report::DocumentFormat::Xlsx;
        EXPECT_NEAR(static_cast<double>(here.size()), static_cast<double>(there.size()), packed ? 16 : 0)
            << row.word;
        EXPECT_GT(there.size(), 20U);
        if (row.format == report::DocumentFormat::Html || row.format == report::DocumentFormat::Csv) {
            EXPECT_EQ(here, there);
        }
    }
}

TEST_F(SameAsEngine, FormulaIsCheckedWhenTheReportRuns) {
    const auto run = [this](const std::string& formula) {
        return BothOf([&](report::Report& report) {
            report.SetRecordSelectionFormula(formula);
            return report.RecordSelectionFormula() + "|" + Exported(report, report::DocumentFormat::Csv);
        });
    };
    EXPECT_THAT(run("{Number} > 1"), testing::AllOf(HasSubstr("Bob"), testing::Not(HasSubstr("Ann"))));
    EXPECT_THAT(run("{Number} >"), HasSubstr("-2147206459: "));
}

TEST_F(SameAsEngine, ParameterWithoutAValueFailsTheRun) {
    Write("must.rpt", PeopleReport(Parameters(Parameter("must", "String"))));
    EXPECT_THAT(
        Both(Path("must.rpt"),
             [this](report::Report& report) { return Exported(report, report::DocumentFormat::Csv); }),
        HasSubstr("-2147206460: "));
}

TEST_F(SameAsEngine, ExportSettingsAreChecked) {
    EXPECT_EQ(BothDo([](report::Report& report) {
                  report.SetExportFormat(1);
                  report.Export(false);
              }),
              "5: There is no export format 1");
    EXPECT_EQ(BothDo([](report::Report& report) {
                  report.SetExportFormat(report::CodeOf(report::DocumentFormat::Pdf));
                  report.SetExportDestination(9);
                  report.Export(false);
              }),
              "5: There is no export destination 9");
    EXPECT_EQ(BothDo([](report::Report& report) {
                  report.SetExportFormat(report::CodeOf(report::DocumentFormat::Pdf));
                  report.SetHtmlFileName("/tmp/other");
                  report.Export(false);
              }),
              "5: The export has no file name");
    EXPECT_EQ(BothDo([this](report::Report& report) {
                  report.SetExportFormat(report::CodeOf(report::DocumentFormat::Pdf));
                  report.SetDiskFileName(Path("nowhere") + "/out.pdf");
                  report.Export(false);
              }),
              "76: Path not found: \"" + Path("nowhere/out.pdf") + "\"");
}

TEST_F(SameAsEngine, DocumentGoesToADevice) {
    EXPECT_EQ(BothDo([](report::Report& report) {
                  report.SetExportFormat(report::CodeOf(report::DocumentFormat::Pdf));
                  report.SetDiskFileName("/dev/null");
                  report.Export(false);
              }),
              "done");
    EXPECT_EQ(BothDo([](report::Report& report) {
                  report.SetExportFormat(report::CodeOf(report::DocumentFormat::Pdf));
                  report.SetDiskFileName("/dev/full");
                  report.Export(false);
              }),
              "61: Disk full: \"/dev/full\"");
}

TEST_F(SameAsEngine, SwitchesAndOptionsAreTaken) {
    EXPECT_EQ(BothDo([](report::Report& report) {
                  report.SetRunSwitches(false, true);
                  report.SetExcelOptions(true, false, true, false, 4);
                  report.SetHtmlOptions(true, false);
              }),
              "done");
}

TEST_F(SameAsEngine, PagesAreForTheScreenOnly) {
    const auto report = m_there->OpenReport(Path("people.rpt"));
    EXPECT_EQ(reports::test::ErrorOf([&] { report->OpenPages(); }).Description(),
              "A report of a run has no pages for the screen");
}

TEST_F(SameAsEngine, ReportsDoNotMix) {
    Write("other.rpt",
          PeopleReport("<Description>other</Description>" + Parameters(Parameter("p", "Boolean"))));
    const auto first = m_there->OpenReport(Path("people.rpt"));
    auto second = m_there->OpenReport(Path("other.rpt"));
    EXPECT_EQ(Children(), 1);
    first->SetRecordSelectionFormula("{Number} = 2");
    second->Parameter(1).AddCurrentValue(true);
    second.reset();
    EXPECT_THAT(Exported(*first, report::DocumentFormat::Csv), HasSubstr("Bob"));
}

}  // namespace
}  // namespace reports::worker::test
