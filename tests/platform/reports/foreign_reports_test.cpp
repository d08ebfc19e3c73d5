// SPDX-License-Identifier: GPL-3.0-or-later
// Reports made by other programs, from opening to the file: each is complete, or its error says why not.
#include <gmock/gmock.h>

#include <utility>
#include <vector>

#include "platform/reports/report_folder.h"
#include "support/format_beginning.h"
#include "support/source_dir.h"

namespace reports::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::filesystem::path Folder = SourceDir() + "/../shared/rdl";

struct Foreign {
    const char* file;
    const char* source;  // replaced by the sample database; null: unchanged
    std::vector<std::pair<std::string, std::string>> parameters;
    const char* text;   // the output holds this text ...
    const char* error;  // ... or the error holds this one
};

const std::vector<Foreign>& Reports() {
    static const std::vector<Foreign> reports{
        {"ChartExampleColumn.rdl", nullptr, {}, nullptr, "SalesData.xml\" does not exist"},
        {"ChartExamplePie.rdl", nullptr, {}, nullptr, "SalesData.xml\" does not exist"},
        {"chart.rdl", "DS1", {}, "aria-label=\"Country Region Chart\"", nullptr},
        {"DrilldownTwoLevel.rdl", "DS1", {}, nullptr, "no such table: Order Details"},
        {"EmployeeOrg.rdl", nullptr, {}, "Linda", nullptr},
        {"Invoice.rdl", nullptr, {{"Company", "Contoso Suites"}}, "Surround Sound Receiver", nullptr},
        {"Labels.rdl",
         nullptr,
         {{"Names", "Ebony E. Gill"}, {"Names", "Nikola Janu"}},
         "Mi Casa Court",
         nullptr},
        {"ListReport.rdl", "DS1", {}, "Davolio", nullptr},
        {"MatrixExample.rdl", nullptr, {}, "New England", nullptr},
        {"SimpleTest1.rdl", "DS1", {}, "Davolio", nullptr},
        {"SimpleTest3WithParameters.rdl", "DS1", {{"TestParam1", "x"}}, "Alfreds Futterkiste", nullptr},
        {"SuppliersStyled.rdl", "DS1", {}, "Exotic Liquids", nullptr},
        {"TableThreeColumns.rdl", nullptr, {}, nullptr, "Contacts.xml\" does not exist"},
        {"TableThreeColumns.rdl", "DS1", {}, "Alejandra Camino", nullptr},
        {"Transcript.rdl", nullptr, {}, "ACTIVE CERTIFICATION PROGRAMS", nullptr},
        {"WorldFacts.rdl", "DS1", {}, nullptr, "WorldFacts.xml\" does not exist"},
        {"functions.rdl", "DS1", {}, "Davolio", nullptr},
    };
    return reports;
}

class ForeignReports : public ReportFolder {
 protected:
    void SetUp() override {
        ReportFolder::SetUp();
        if (!std::filesystem::exists(Folder)) {
            GTEST_SKIP() << "no reports of other people here";
        }
    }
    void Export(const Foreign& foreign, int format) const {
        const auto report = OpenRdlReport((Folder / foreign.file).string());
        if (foreign.source) {
            report->SetDataSource(foreign.source, "SQLITE",
                                  "Data Source=" + (Folder / "northwindEF.db").string());
        }
        for (int n = 1; n <= report->ParameterFieldCount(); ++n) {
            for (const auto& [name, value] : foreign.parameters) {
                if (report->Parameter(n).Name() == name) {
                    report->Parameter(n).AddCurrentValue(value);
                }
            }
        }
        report->SetExportDestination(report::DestinationDisk);
        report->SetExportFormat(format);
        report->SetDiskFileName(Path("out"));
        report->SetHtmlFileName(Path("out"));
        report->Export(false);
    }
};

TEST_F(ForeignReports, ComeOutInEveryFormatOrSayWhyNot) {
    for (const Foreign& foreign : Reports()) {
        for (const report::FormatRow& row : report::FormatTable) {
            SCOPED_TRACE(std::string(foreign.file) + " as " + std::string(row.word));
            const RuntimeError error = ErrorOf([&] { Export(foreign, row.Code()); });
            if (foreign.error) {
                EXPECT_THAT(error.Description(), HasSubstr(foreign.error));
                EXPECT_THAT(error.Description(), Not(HasSubstr("'")));
                continue;
            }
            EXPECT_EQ(error.Description(), "");
            const std::string output = Read("out");
            EXPECT_THAT(output.substr(0, 20), StartsWith(std::string(BeginningOf(row.format))));
            if (row.format == report::DocumentFormat::Html) {
                EXPECT_THAT(output, HasSubstr(foreign.text));
                EXPECT_THAT(output, Not(HasSubstr("#Error")));
            }
        }
    }
}

TEST_F(ForeignReports, AreAllTried) {
    for (const auto& entry : std::filesystem::directory_iterator(Folder)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".rdl") {
            EXPECT_TRUE(std::any_of(Reports().begin(), Reports().end(), [&](const Foreign& foreign) {
                return name == foreign.file;
            })) << name;
        }
    }
}

}  // namespace
}  // namespace reports::test
