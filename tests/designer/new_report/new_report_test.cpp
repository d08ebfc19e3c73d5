// SPDX-License-Identifier: GPL-3.0-or-later
// Reports are made, opened and run by the engine.
#include "designer/new_report/new_report.h"

#include <gmock/gmock.h>

#include "designer/new_report/themes.h"
#include "rdl/api/report.h"
#include "rdl/string_output.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* Sales =
    "Region,Country,Customer,Day,Pieces,Amount\n"
    "North,Sweden,Berg,2025-03-01,2,1200.10\n"
    "South,Italy,Conti,2025-03-02,10,0.20\n"
    "North,Sweden,Dahl,2025-03-04,4,80.30\n"
    "North,Norway,Vik,2025-04-01,1,3.05\n";

class NewReports : public testing::Test {
 protected:
    NewReports() {
        WriteBytes(m_folder / "sales.csv", Sales);
        m_report.title = "Sales";
        m_report.provider = "CSV";
        m_report.connectString = "Data Source=sales.csv";
        Read();
    }

    void Read() {
        m_report.columns = ColumnsOf(rdl::ReadQueryRows({.provider = m_report.provider,
                                                         .connectString = m_report.connectString,
                                                         .folder = m_folder.Path()}));
    }

    std::string Run(rdl::DocumentFormat format) const {
        WriteBytes(m_folder / "sales.rdl", NewReportText(m_report));
        const std::shared_ptr<rdl::Report> report = rdl::OpenReport(m_folder / "sales.rdl");
        EXPECT_EQ(report->Title(), m_report.title);
        rdl::StringOutput text;
        report->Write(format, text);
        return text.bytes;
    }
    // The texts of the pages.
    std::vector<std::string> Pages() const {
        WriteBytes(m_folder / "sales.rdl", NewReportText(m_report));
        const std::unique_ptr<rdl::Pages> pages = rdl::OpenReport(m_folder / "sales.rdl")->OpenPages();
        std::vector<std::string> texts;
        while (pages->Reach(pages->Made() + 1)) {
        }
        for (int page = 1; page <= pages->Made(); ++page) {
            std::string& text = texts.emplace_back();
            for (const rdl::PageCharacter& character : pages->Characters(page)) {
                text += character.text + (character.endsLine ? "\n" : "");
            }
        }
        return texts;
    }
    std::string Csv() const { return Run(rdl::DocumentFormat::Csv); }
    std::string Refusal() const {
        return DescriptionRaisedBy([&] { NewReportText(m_report); });
    }

    // Something for everything that the layout has.
    void Fill(ReportLayout layout) {
        m_report.layout = layout;
        m_report.shown = {"Customer", "Day", "Pieces", "Amount"};
        m_report.groups = {"Region", "Country"};
        m_report.sums = {"Pieces", "Amount"};
        m_report.rows = {"Region", "Country"};
        m_report.across = {"Day"};
        m_report.values = {"Amount", "Pieces"};
    }

    TemporaryFolder m_folder;
    NewReport m_report;
};

TEST_F(NewReports, OfEachLayoutAndThemeRun) {
    for (const Theme& theme : Themes) {
        for (std::size_t layout = 0; layout < LayoutWords.size(); ++layout) {
            for (std::size_t chart = 0; chart < ChartWords.size(); ++chart) {
                Fill(static_cast<ReportLayout>(layout));
                m_report.theme = theme.name;
                m_report.chart = static_cast<ReportChart>(chart);
                m_report.paper = chart % 2 == 0 ? ReportPaper::A4 : ReportPaper::Letter;
                m_report.landscape = chart == 1 && m_report.layout != ReportLayout::Labels;
                const std::string where = std::string(theme.name) + " " + std::string(LayoutWords[layout]) +
                                          " " + std::string(ChartWords[chart]);
                const std::string csv = Csv();
                EXPECT_THAT(csv, AllOf(HasSubstr("1,200.10"), Not(HasSubstr("#Error")))) << where;
                EXPECT_THAT(Run(rdl::DocumentFormat::Pdf), testing::StartsWith("%PDF-1.7")) << where;
            }
        }
    }
}

TEST_F(NewReports, OfATableHaveTotalsOfEachGroupAndOfAll) {
    Fill(ReportLayout::Table);
    EXPECT_EQ(
        Csv(),
        "\xEF\xBB\xBF"
        "Region_Group,Country_Group,Customer,Day,Pieces,Amount,Label_Country_Total,Pieces_Country_Total,"
        "Amount_Country_Total,Label_Region_Total,Pieces_Region_Total,Amount_Region_Total,Pieces_Total,"
        "Amount_Total\r\n"
        "North,Norway,Vik,4/1/2025,1,3.05,Total Norway,1,3.05,Total North,7,\"1,283.45\",17,\"1,283.65\"\r\n"
        "North,Sweden,Berg,3/1/2025,2,\"1,200.10\",Total Sweden,6,\"1,280.40\",Total "
        "North,7,\"1,283.45\",17,\"1,283.65\"\r\n"
        "North,Sweden,Dahl,3/4/2025,4,80.30,Total Sweden,6,\"1,280.40\",Total "
        "North,7,\"1,283.45\",17,\"1,283.65\"\r\n"
        "South,Italy,Conti,3/2/2025,10,0.20,Total Italy,10,0.20,Total South,10,0.20,17,\"1,283.65\"\r\n");
}

TEST_F(NewReports, HaveWordsForAGroupWithoutAValue) {
    WriteBytes(m_folder / "sales.csv",
               "Region,Country,Customer,Day,Pieces,Amount\nNorth,,Berg,2025-03-01,2,5.00\n"
               ",Italy,Conti,2025-03-02,10,0.20\n");
    Read();
    for (const ReportLayout layout : {ReportLayout::Table, ReportLayout::Blocked, ReportLayout::Matrix}) {
        Fill(layout);
        m_report.chart = ReportChart::Column;
        const std::string text = Pages().front();
        EXPECT_THAT(text, AllOf(HasSubstr("(no Region)"), HasSubstr("(no Country)"), HasSubstr("North"),
                                HasSubstr("Italy")));
    }
    Fill(ReportLayout::Table);
    EXPECT_THAT(Pages().front(), HasSubstr("Total (no Region)"));
    EXPECT_THAT(NewReportText(m_report), HasSubstr("<Value>=Fields!Customer.Value</Value>"));
}

TEST_F(NewReports, ShowTheColumnsThatAreChosenInTheirOrder) {
    m_report.shown = {"amount", "Customer"};
    EXPECT_EQ(Csv(),
              "\xEF\xBB\xBF"
              "Amount,Customer\r\n\"1,200.10\",Berg\r\n0.20,Conti\r\n80.30,Dahl\r\n3.05,Vik\r\n");
    m_report.sums = {"Pieces"};
    EXPECT_THAT(Csv(), HasSubstr("Amount,Customer,Pieces,Pieces_Total\r\n\"1,200.10\",Berg,2,17\r\n"));
}

TEST_F(NewReports, HaveAChartOfTheFirstSumByTheFirstGroup) {
    m_report.chart = ReportChart::Column;
    m_report.shown = {"Customer"};
    EXPECT_THAT(Csv(), HasSubstr("Berg,Rows,1\r\nConti,Rows,1\r\nDahl,Rows,1\r\nVik,Rows,1\r\n\r\n"));
    m_report.groups = {"Region"};
    EXPECT_THAT(Csv(), HasSubstr("North,Rows,3\r\nSouth,Rows,1\r\n\r\n"));
    m_report.sums = {"Amount", "Pieces"};
    EXPECT_THAT(Csv(), HasSubstr("North,Amount,1283.45\r\nSouth,Amount,0.20\r\n\r\n"));
    Fill(ReportLayout::Matrix);
    m_report.across = {"Country"};
    m_report.rows = {"Region"};
    EXPECT_THAT(Csv(), AllOf(HasSubstr("North,Norway,3.05\r\n"), HasSubstr("North,Sweden,1280.4")));
}

TEST_F(NewReports, RepeatTheHeadingsOnEachPage) {
    std::string csv = "Region,Customer,Amount\n";
    for (int row = 0; row < 100; ++row) {
        csv += "North,Berg,1.25\n";
    }
    WriteBytes(m_folder / "sales.csv", csv);
    Read();
    for (const ReportLayout layout : {ReportLayout::Table, ReportLayout::Blocked}) {
        m_report.layout = layout;
        m_report.groups = {"Region"};
        m_report.sums = {"Amount"};
        const std::vector<std::string> pages = Pages();
        ASSERT_EQ(pages.size(), 3U);
        for (std::size_t page = 0; page < pages.size(); ++page) {
            EXPECT_THAT(pages[page], AllOf(HasSubstr("Customer"), HasSubstr("Amount"), HasSubstr("North")));
            EXPECT_THAT(pages[page], HasSubstr("Page " + std::to_string(page + 1) + " of 3"));
        }
        EXPECT_THAT(pages[2], AllOf(HasSubstr("Total North"), HasSubstr("125.00")));
    }
}

// The paper's unit, indentation, the order of the elements, the side and the format of a number.
TEST_F(NewReports, AreWrittenPlainly) {
    m_report.paper = ReportPaper::Letter;
    const std::string text = NewReportText(m_report);
    EXPECT_THAT(
        text,
        testing::StartsWith(
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition\" "
            "xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/reportdesigner\">\n"
            "  <DataSources>\n"
            "    <DataSource Name=\"Source\">\n"
            "      <ConnectionProperties>\n"
            "        <DataProvider>CSV</DataProvider>\n"
            "        <ConnectString>Data Source=sales.csv</ConnectString>\n"
            "      </ConnectionProperties>\n"
            "    </DataSource>\n"
            "  </DataSources>\n"));
    EXPECT_THAT(text, HasSubstr("        <Field Name=\"Amount\">\n"
                                "          <DataField>Amount</DataField>\n"
                                "          <rd:TypeName>System.Decimal</rd:TypeName>\n"
                                "        </Field>\n"));
    const std::string indent(20, ' ');
    EXPECT_THAT(text, HasSubstr("<Textbox Name=\"Amount\">\n" + indent + "      <CanGrow>true</CanGrow>\n" +
                                indent + "      <KeepTogether>true</KeepTogether>\n"));
    EXPECT_THAT(text, HasSubstr("<Format>N2</Format>"));
    EXPECT_THAT(text, HasSubstr("<TextAlign>Right</TextAlign>"));
    EXPECT_THAT(text, HasSubstr("<PageHeight>11in</PageHeight>"));
    EXPECT_THAT(text, HasSubstr("<LeftMargin>0.7874in</LeftMargin>"));
    EXPECT_THAT(text, Not(HasSubstr("cm<")));
}

TEST_F(NewReports, HaveNamesThatDifferFromThoseOfTheColumns) {
    WriteBytes(m_folder / "sales.csv", "Data,Details,Table,Title,Amount_Total,Amount\nx,y,z,t,u,1.5\n");
    Read();
    m_report.sums = {"Amount"};
    EXPECT_EQ(Csv(),
              "\xEF\xBB\xBF"
              "Data_2,Details_2,Table,Title_2,Amount_Total,Amount,Amount_Total_2\r\nx,y,z,t,u,1.50,1.50\r\n");
}

TEST_F(NewReports, OfRowsWithoutGroupsHaveALetterForEachRow) {
    m_report.layout = ReportLayout::Letter;
    const std::vector<std::string> pages = Pages();
    ASSERT_EQ(pages.size(), 4U);
    EXPECT_THAT(pages[2], AllOf(HasSubstr("Customer"), HasSubstr("Dahl"), HasSubstr("80.30")));
}

TEST_F(NewReports, OfLabelsFillASheet) {
    m_report.layout = ReportLayout::Labels;
    for (const auto& [paper, most] : {std::pair(ReportPaper::A4, 21), std::pair(ReportPaper::Letter, 30)}) {
        m_report.paper = paper;
        std::string csv = "Name,City\n";
        for (int row = 0; row < most; ++row) {
            csv += "Ann,Oslo\n";
        }
        WriteBytes(m_folder / "sales.csv", csv);
        Read();
        EXPECT_EQ(Pages().size(), 1U) << most;
        WriteBytes(m_folder / "sales.csv", csv + "Bo,Rome\n");
        const std::vector<std::string> pages = Pages();
        ASSERT_EQ(pages.size(), 2U) << most;
        EXPECT_EQ(pages[1], "Bo\nRome\n");
    }
}

TEST_F(NewReports, ShowDatesOfGroupsInTheirShortForm) {
    m_report.groups = {"Day"};
    m_report.shown = {"Customer", "Amount"};
    m_report.sums = {"Amount"};
    for (const ReportLayout layout : {ReportLayout::Table, ReportLayout::Blocked}) {
        m_report.layout = layout;
        m_report.language = "en-US";
        EXPECT_THAT(Csv(),
                    HasSubstr("\r\n3/1/2025,Berg,\"1,200.10\",Total 3/1/2025,\"1,200.10\",\"1,283.65\"\r\n"));
        m_report.language = "de-DE";
        EXPECT_THAT(Csv(), HasSubstr("\r\n01.03.2025,Berg,\"1.200,10\",Total 01.03.2025,"));
    }
}

TEST_F(NewReports, LieOnTheLongSideOfThePaper) {
    EXPECT_THAT(NewReportText(m_report), HasSubstr("<PageWidth>21cm</PageWidth>"));
    m_report.landscape = true;
    EXPECT_THAT(NewReportText(m_report),
                AllOf(HasSubstr("<PageHeight>21cm</PageHeight>\n        <PageWidth>29.7cm</PageWidth>"),
                      HasSubstr("<Width>25.7cm</Width>\n      <Page>")));
}

TEST_F(NewReports, KeepTextsThatLookLikeExpressions) {
    m_report.title = "=1+1 {x} \"quoted\" <&>";
    WriteBytes(m_folder / "sales.csv", "=now(),{@PageNumber}\n=2+2,\"a \"\"b\"\"\"\n");
    Read();
    const std::string html = Run(rdl::DocumentFormat::Html);
    EXPECT_THAT(html, HasSubstr("=1+1 {x} &quot;quoted&quot; &lt;&amp;&gt;"));
    EXPECT_THAT(html, HasSubstr("=now()"));
    EXPECT_THAT(html, HasSubstr("{@Page Number}"));
    EXPECT_THAT(html, HasSubstr("=2+2"));
}

TEST_F(NewReports, OfUnknownColumnsAreRefusedWithTheKnownOnes) {
    constexpr const char* Known = "\"Region\", \"Country\", \"Customer\", \"Day\", \"Pieces\", \"Amount\"";
    const std::string expected = std::string("The query has no column \"Amout\"; it has ") + Known;
    for (std::vector<std::string>* const list : {&m_report.shown, &m_report.groups, &m_report.sums}) {
        *list = {"Amout"};
        EXPECT_EQ(Refusal(), expected);
        list->clear();
    }
    m_report.sums = {"Customer"};
    EXPECT_EQ(Refusal(), "The column \"Customer\" cannot be summed: its values are no numbers");
    m_report.sums = {"Amount", "AMOUNT"};
    EXPECT_EQ(Refusal(), "The column \"Amount\" is named twice");
    m_report.sums = {"Amount"};
    m_report.groups = {"Amount"};
    EXPECT_EQ(Refusal(), "The column \"Amount\" cannot be both a group and a sum");
    m_report.sums.clear();
    m_report.shown = {"Amount"};
    EXPECT_EQ(Refusal(), std::string("All columns that are shown are groups; the query has ") + Known);
}

TEST_F(NewReports, OfAMatrixNeedRowsColumnsAndValues) {
    Fill(ReportLayout::Matrix);
    m_report.across = {"Region"};
    EXPECT_EQ(Refusal(), "The column \"Region\" cannot give both rows and columns of a matrix");
    m_report.across.clear();
    EXPECT_EQ(Refusal(),
              "A matrix needs columns for its rows, its columns and its values; the query has \"Region\", "
              "\"Country\", \"Customer\", \"Day\", \"Pieces\", \"Amount\"");
}

TEST_F(NewReports, OfUnknownThemesAreRefused) {
    m_report.theme = "neon";
    EXPECT_EQ(Refusal(), "There is no theme \"neon\": the themes are plain, ocean, forest, slate or ember");
}

TEST_F(NewReports, OfLabelsWithTooManyLinesAreRefused) {
    m_report.layout = ReportLayout::Labels;
    m_report.paper = ReportPaper::Letter;
    EXPECT_EQ(Refusal(), "A label has 5 lines, and 6 columns are shown: choose fewer of them");
}

}  // namespace
}  // namespace designer
