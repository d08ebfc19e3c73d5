// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/background_run.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/reports/report_folder.h"
#include "rdl/screen/page_kit.h"

namespace reports::test {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

// A query that SQLite works at for hours.
const char* const Endless =
    "with recursive n(i) as (select 1 union all select i + 1 from n) select count(*) as Number from n";
const char* const Rows =
    "with recursive n(i) as (select 1 union all select i + 1 from n where i &lt; 400) "
    "select i as Number from n";

class BackgroundRunTest : public ReportFolder {
 protected:
    // A row of 1 cm for each row of the query, on pages of 6 cm.
    BackgroundRun::Begin Opening(const std::string& query, const std::string& cell) {
        Write("store.db", "");
        const auto report = OpenRdlText(
            "<Report "
            "xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
            "<Width>4in</Width><PageWidth>12cm</PageWidth><PageHeight>6cm</PageHeight><DataSources>"
            "<DataSource Name=\"s\"><ConnectionProperties><DataProvider>SQLite</DataProvider>"
            "<ConnectString>Data Source=store.db</ConnectString></ConnectionProperties></DataSource>"
            "</DataSources><DataSets><DataSet Name=\"d\"><Query><DataSourceName>s</DataSourceName>"
            "<CommandText>" +
                query +
                "</CommandText></Query><Fields><Field Name=\"Number\"><DataField>Number</DataField></Field>"
                "</Fields></DataSet></DataSets><Body><Height>1cm</Height><ReportItems><Table Name=\"t\">"
                "<DataSetName>d</DataSetName><TableColumns><TableColumn><Width>6cm</Width></TableColumn>"
                "</TableColumns><Details><TableRows><TableRow><Height>1cm</Height><TableCells><TableCell>"
                "<ReportItems><Textbox Name=\"n\"><Value>" +
                cell +
                "</Value></Textbox></ReportItems></TableCell></TableCells></TableRow></TableRows></Details>"
                "</Table></ReportItems></Body></Report>",
            Path("rows.rdl"));
        return [report] { return report->OpenPages(); };
    }
    template <typename Condition>
    static bool Becomes(Condition condition) {
        for (const auto end = steady_clock::now() + seconds(20); steady_clock::now() < end;) {
            if (condition()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }
};

TEST_F(BackgroundRunTest, MakesAllPagesWhileOthersAreDrawn) {
    const BackgroundRun run(Opening(Rows, "=\"Row \" &amp; Fields!Number.Value"));
    const auto pages = run.Pages();
    ASSERT_TRUE(Becomes([&] { return pages->Reach(1); }));
    while (!run.HasEnded()) {
        std::string text;
        for (const report::Character& character : pages->Characters(1)) {
            text += character.text + (character.endsLine ? "|" : "");
        }
        EXPECT_EQ(text.substr(0, 12), "Row 1|Row 2|");
    }
    EXPECT_FALSE(run.Failure());
    EXPECT_TRUE(pages->AllMade());
    EXPECT_EQ(run.PagesMade(), 67);
    EXPECT_EQ(pages->PagesMade(), 67);
    EXPECT_TRUE(pages->Reach(67));
    EXPECT_FALSE(pages->Reach(68));
    EXPECT_EQ(pages->Characters(67).front().text, "R");
}

// Both threads find fonts, measure texts and group rows.
TEST_F(BackgroundRunTest, AnotherReportRunsMeanwhile) {
    const std::string cell = "=Fields!Number.Value &amp; \" \u0416\u05d0\u4e2d \" &amp; StrDup(40, \"x\")";
    std::string alone;
    for (int round = 0; round < 5; ++round) {
        const BackgroundRun run(Opening(Rows, cell));
        const auto report = OpenRdlText(PeopleReport(), Path("people.rdl"));
        while (!run.HasEnded()) {
            const auto pages = report->OpenPages();
            pages->Reach(1);
            std::string text;
            for (const report::Character& character : pages->Characters(1)) {
                text += character.text;
            }
            alone = alone.empty() ? text : alone;
            ASSERT_EQ(text, alone);
        }
        EXPECT_FALSE(run.Failure());
        EXPECT_EQ(run.PagesMade(), 67);
    }
    EXPECT_NE(alone.find("Ann"), std::string::npos);
}

TEST_F(BackgroundRunTest, AnErrorIsRaisedByThePages) {
    const BackgroundRun run(Opening("select Amount", "x"));
    const auto pages = run.Pages();
    ASSERT_TRUE(Becomes([&] { return run.HasEnded(); }));
    ASSERT_TRUE(run.Failure());
    EXPECT_EQ(run.Failure()->Description(),
              "Data set \"d\", data source \"s\": the query is wrong: no such column: Amount");
    EXPECT_THROW(pages->Reach(1), RuntimeError);
    EXPECT_FALSE(pages->AllMade());
    EXPECT_THROW(pages->Width(1), RuntimeError);
}

TEST_F(BackgroundRunTest, AQueryIsStopped) {
    BackgroundRun run(Opening(Endless, "x"));
    const auto pages = run.Pages();
    EXPECT_FALSE(pages->Reach(1));
    EXPECT_FALSE(run.HasEnded());
    const auto begin = steady_clock::now();
    run.Stop();
    ASSERT_TRUE(Becomes([&] { return run.HasEnded(); }));
    EXPECT_LT(steady_clock::now() - begin, seconds(2));
    EXPECT_TRUE(run.IsStopped());
    EXPECT_FALSE(run.Failure());
    EXPECT_EQ(run.PagesMade(), 0);
}

TEST_F(BackgroundRunTest, ARunThatNobodyWantsIsEndedWithItsPages) {
    std::unique_ptr<report::PageView> pages;
    const auto begin = steady_clock::now();
    {
        const BackgroundRun run(Opening(Endless, "x"));
        pages = run.Pages();
    }
    EXPECT_LT(steady_clock::now() - begin, seconds(2));
    EXPECT_THROW(pages->Width(1), RuntimeError);
}

}  // namespace
}  // namespace reports::test
