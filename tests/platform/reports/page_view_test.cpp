// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "platform/contracts/report_view.h"
#include "platform/reports/failure.h"
#include "platform/reports/report_folder.h"
#include "rdl/screen/page_kit.h"

namespace reports::test {
namespace {

class PageViewTest : public ReportFolder {
 protected:
    // Rows of 1 cm on pages of 6 cm, with `cell` in each row and `rest` in the report.
    static std::string Rows(int rows, const std::string& cell, const std::string& rest = "") {
        std::string data;
        for (int i = 1; i <= rows; ++i) {
            data += "<Row><Number>" + std::to_string(i) + "</Number></Row>";
        }
        return "<Report "
               "xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
               "<Width>4in</Width><PageWidth>12cm</PageWidth><PageHeight>6cm</PageHeight>"
               "<DataSets><DataSet Name=\"d\"><Query/><Fields><Field Name=\"Number\">"
               "<DataField>Number</DataField></Field></Fields><Rows>" +
               data +
               "</Rows></DataSet></DataSets><Body><Height>1cm</Height><ReportItems><Table Name=\"t\">"
               "<DataSetName>d</DataSetName><TableColumns><TableColumn><Width>6cm</Width></TableColumn>"
               "</TableColumns><Details><TableRows><TableRow><Height>1cm</Height><TableCells><TableCell>"
               "<ReportItems><Textbox Name=\"n\">" +
               cell +
               "</Textbox></ReportItems></TableCell></TableCells></TableRow></TableRows></Details></Table>"
               "</ReportItems></Body>" +
               rest + "</Report>";
    }
    std::unique_ptr<report::PageView> Open(const std::string& definition) {
        m_report = OpenRdlReport(Write("rows.rpt", definition));
        return m_report->OpenPages();
    }
    static std::string Text(report::PageView& pages, int n) {
        std::string text;
        for (const report::Character& character : pages.Characters(n)) {
            text += character.text + (character.endsLine ? "|" : "");
        }
        return text;
    }

    std::shared_ptr<RdlReport> m_report;
};

const std::string Number = "<Value>=\"Row \" &amp; Fields!Number.Value</Value>";
const std::string Totals =
    "<PageHeader><Height>1cm</Height><PrintOnFirstPage>true</PrintOnFirstPage><PrintOnLastPage>true"
    "</PrintOnLastPage><ReportItems><Textbox Name=\"h\"><Value>=\"Page \" &amp; Globals!PageNumber &amp; "
    "\" of \" &amp; Globals!TotalPages</Value></Textbox></ReportItems></PageHeader>";

TEST_F(PageViewTest, PagesAreMadeAsTheyAreAskedFor) {
    const auto pages = Open(Rows(40, Number));
    EXPECT_EQ(pages->PagesMade(), 0);
    EXPECT_TRUE(pages->Reach(2));
    EXPECT_EQ(pages->PagesMade(), 2);
    EXPECT_FALSE(pages->AllMade());
    EXPECT_FALSE(pages->Reach(1000));
    EXPECT_TRUE(pages->AllMade());
    EXPECT_EQ(pages->PagesMade(), 7);
    EXPECT_NEAR(pages->Width(1), 12 / 2.54 * 72, 0.01);
    EXPECT_EQ(Text(*pages, 1).substr(0, 12), "Row 1|Row 2|");
}

TEST_F(PageViewTest, APageThatWasPutByIsDrawnLikeANewOne) {
    const auto pages = Open(Rows(100, Number));
    pages->Reach(1);
    const auto draw = [&] {
        QImage image(400, 200, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        pages->Draw(1, painter);
        return image;
    };
    const QImage before = draw();
    EXPECT_GT(rdl::screen::test::DarkPixels(before), 100);
    pages->Reach(1000);
    for (int n = 1; n <= pages->PagesMade(); ++n) {
        pages->Characters(n);
    }
    EXPECT_EQ(draw(), before);
}

TEST_F(PageViewTest, TheNumberOfAllPagesStaysEmptyUntilItIsKnown) {
    const auto pages = Open(Rows(20, Number, Totals));
    pages->Reach(1);
    EXPECT_TRUE(pages->WaitsForTotal());
    EXPECT_EQ(Text(*pages, 1).substr(0, 10), "Page 1 of ");
    EXPECT_EQ(Text(*pages, 1).find("\xEE\x80"), std::string::npos);
    pages->Reach(100);
    EXPECT_FALSE(pages->WaitsForTotal());
    EXPECT_EQ(Text(*pages, 1).substr(0, 12), "Page 1 of 4|");
}

TEST_F(PageViewTest, AReportWithoutRowsHasOnePage) {
    m_report = OpenRdlReport(Write("rows.rpt", Rows(3, Number)));
    m_report->SetRecordSelectionFormula("{Number} > 3");
    const auto pages = m_report->OpenPages();
    EXPECT_TRUE(pages->Reach(1));
    EXPECT_FALSE(pages->Reach(2));
    EXPECT_EQ(Text(*pages, 1), "");
}

TEST_F(PageViewTest, TheDocumentMapGrowsWithThePages) {
    const auto pages = Open(Rows(12, Number + "<Label>=\"L\" &amp; Fields!Number.Value</Label>"));
    pages->Reach(1);
    const std::size_t first = pages->DocumentMap().size();
    EXPECT_GT(first, 0U);
    EXPECT_EQ(pages->DocumentMap().front().label, "L1");
    pages->Reach(100);
    ASSERT_EQ(pages->DocumentMap().size(), 12U);
    EXPECT_EQ(pages->DocumentMap().back().label, "L12");
    EXPECT_EQ(pages->DocumentMap().back().page, pages->PagesMade());
}

TEST_F(PageViewTest, LinksLeadOutAndToPlacesThatAreThere) {
    const auto pages = Open(Rows(1, Number + "<Action><Hyperlink>http://example.com/a</Hyperlink></Action>"));
    pages->Reach(1);
    ASSERT_EQ(pages->Links(1).size(), 1U);
    EXPECT_EQ(pages->Links(1)[0].uri, "http://example.com/a");

    const auto inside = Open(Rows(12, Number + "<Bookmark>=\"b\" &amp; Fields!Number.Value</Bookmark>"
                                               "<Action><BookmarkLink>b12</BookmarkLink></Action>"));
    inside->Reach(1);
    EXPECT_TRUE(inside->Links(1).empty()) << "where it leads is not made yet";
    inside->Reach(100);
    ASSERT_FALSE(inside->Links(1).empty());
    EXPECT_EQ(inside->Links(1)[0].page, inside->PagesMade());
    EXPECT_EQ(inside->Links(1)[0].uri, "");
}

TEST_F(PageViewTest, LinksThatRunSomethingAreNone) {
    const auto pages = Open(Rows(1, Number + "<Action><Hyperlink>javascript:x()</Hyperlink></Action>"));
    pages->Reach(1);
    EXPECT_TRUE(pages->Links(1).empty());
}

TEST_F(PageViewTest, LinksToFilesAreHandedOnAsTheyAreForTheReaderToBeTold) {
    const auto pages = Open(Rows(1, Number + "<Action><Hyperlink>FILE:///etc/passwd</Hyperlink></Action>"));
    pages->Reach(1);
    ASSERT_EQ(pages->Links(1).size(), 1U);
    EXPECT_EQ(pages->Links(1)[0].uri, "FILE:///etc/passwd");
}

TEST_F(PageViewTest, PagesAreWrittenAsAPdfDocumentWithTheirLettersAndWithoutOutlines) {
    const auto pages = Open(Rows(22, Number));
    pages->Reach(100);
    ASSERT_GT(pages->PagesMade(), 3);
    const std::string file = (m_folder / "out.pdf").string();
    std::vector<int> asked;
    EXPECT_TRUE(pages->WritePdf(file, 2, 3, [&](int page) {
        asked.push_back(page);
        return true;
    }));
    EXPECT_EQ(asked, (std::vector<int>{2, 3}));
    const auto said = [&](const std::string& command) {
        std::string text;
        std::FILE* pipe = popen((command + " " + file + " -").c_str(), "r");
        char piece[4096];
        while (std::fgets(piece, sizeof piece, pipe)) {
            text += piece;
        }
        pclose(pipe);
        return text;
    };
    const std::string text = said("pdftotext");
    for (int page : {2, 3}) {
        std::string first = Text(*pages, page);
        first = first.substr(0, first.find('|'));
        EXPECT_NE(text.find(first), std::string::npos) << text;
    }
    EXPECT_LT(std::filesystem::file_size(file), 40000U);
}

TEST_F(PageViewTest, ADocumentThatIsGivenUpLeavesNoFile) {
    const auto pages = Open(Rows(22, Number));
    pages->Reach(100);
    const std::filesystem::path file = m_folder / "out.pdf";
    EXPECT_FALSE(pages->WritePdf(file.string(), 1, 3, [](int page) { return page < 2; }));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_THROW(pages->WritePdf(file.string(), 1, 1000, [](int) { return true; }), RuntimeError);
}

TEST_F(PageViewTest, ParametersOfTheReportHold) {
    m_report = OpenPeople(
        "<ReportParameters><ReportParameter Name=\"p\"><DataType>Integer</DataType>"
        "</ReportParameter></ReportParameters>");
    EXPECT_EQ(ErrorOf([&] { m_report->OpenPages(); }).Number(), InvalidParameter);
    m_report->Parameter(1).AddCurrentValue(4.0);
    m_report->SetRecordSelectionFormula("{Number} > 2");
    const auto pages = m_report->OpenPages();
    pages->Reach(1);
    EXPECT_EQ(Text(*pages, 1), "Cleo|");
}

TEST_F(PageViewTest, APageThatIsNotMadeIsOutOfRange) {
    const auto pages = Open(Rows(1, Number));
    EXPECT_EQ(ErrorOf([&] { pages->Characters(1); }).Number(), err::SubscriptOutOfRange);
}

}  // namespace
}  // namespace reports::test
