// SPDX-License-Identifier: GPL-3.0-or-later
// Limits on what a report may use of its machine.
#include "platform/contracts/report_view.h"
#include "platform/reports/failure.h"
#include "platform/reports/file_output.h"
#include "platform/reports/report_folder.h"

namespace reports {
namespace {

using std::chrono::seconds;
using test::ErrorOf;

class Limits : public test::ReportFolder {
 protected:
    RuntimeError ExportError(RdlReport& report,
                             int format = report::CodeOf(report::DocumentFormat::Pdf)) const {
        report.SetExportDestination(report::DestinationDisk);
        report.SetExportFormat(format);
        report.SetDiskFileName(paths::FromMachine(Path("out.pdf")));
        return ErrorOf([&] { report.Export(false); });
    }
};

TEST_F(Limits, AnExportThatTakesTooMuchOfTheProcessorEndsWithAnErrorAndNoFile) {
    const auto report = OpenPeople();
    report->SetRunBounds({seconds(0), seconds(60), 4096});
    EXPECT_EQ(ExportError(*report).Description(),
              "Data set \"People\": The report takes more than 0 minutes of the processor");
    EXPECT_FALSE(std::filesystem::exists(Path("out.pdf")));
}

TEST_F(Limits, AnExportWhoseDataTakesTooLongEndsWithAnError) {
    const auto report = OpenPeople();
    report->SetRunBounds({seconds(60), seconds(0), 4096});
    const RuntimeError error = ExportError(*report);
    EXPECT_EQ(error.Description(), "Data set \"People\": The data of the report takes longer than 0 minutes");
    EXPECT_EQ(error.Number(), DataFailed);
}

TEST_F(Limits, PagesForTheScreenAreBoundedInTheSameWay) {
    const auto report = OpenPeople();
    report->SetRunBounds({seconds(0), seconds(60), 4096});
    EXPECT_EQ(ErrorOf([&] { report->OpenPages(); }).Description(),
              "Data set \"People\": The report takes more than 0 minutes of the processor");
}

TEST_F(Limits, ARunEndsInTheMiddleOfItsExpressions) {
    std::string boxes;
    for (int i = 0; i < 20; ++i) {
        boxes += "<Textbox Name=\"b" + std::to_string(i) + "\"><Value>=Code.Slow(1)</Value></Textbox>";
    }
    const auto report = OpenPeople(
        "<Code>Function Slow(x)\nFor i = 1 To 1500000\nx = x + 1\nNext\nReturn x\nEnd Function</Code>"
        "<PageHeader><Height>1in</Height><PrintOnFirstPage>true</PrintOnFirstPage><ReportItems>" +
        boxes + "</ReportItems></PageHeader>");
    report->SetRunBounds({std::chrono::milliseconds(200), seconds(60), 4096});
    EXPECT_EQ(ExportError(*report).Description(),
              "The report takes more than 200 milliseconds of the processor");
}

TEST_F(Limits, AnImageOfTooManyPixelsIsRefusedInEveryFormat) {
    // The header of a PNG of 40,000 by 40,000 pixels.
    const auto report = OpenPeople(
        "<EmbeddedImages><EmbeddedImage "
        "Name=\"huge\"><MIMEType>image/png</MIMEType><ImageData>iVBORw0KGgoAAAANSUhEUgAAnEAAAJxACAIAAAA="
        "</ImageData></EmbeddedImage></EmbeddedImages><PageHeader><Height>1in</Height>"
        "<PrintOnFirstPage>true</PrintOnFirstPage><ReportItems><Image Name=\"logo\"><Source>Embedded</Source>"
        "<Value>huge</Value></Image></ReportItems></PageHeader>");
    for (const report::FormatRow& row : report::FormatTable) {
        if (row.format == report::DocumentFormat::Csv) {
            continue;  // has no images
        }
        report->SetHtmlFileName(paths::FromMachine(Path("out.pdf")));
        EXPECT_EQ(ExportError(*report, row.Code()).Description(),
                  "Image \"logo\" has more than 64 million pixels")
            << row.word;
    }
}

std::string WithImage(const std::string& bytes, const std::string& source = "Embedded") {
    return "<EmbeddedImages><EmbeddedImage Name=\"cut\"><MIMEType>image/png</MIMEType><ImageData>" + bytes +
           "</ImageData></EmbeddedImage></EmbeddedImages><PageHeader><Height>1in</Height>"
           "<PrintOnFirstPage>true</PrintOnFirstPage><ReportItems><Image Name=\"logo\"><Source>" +
           source + "</Source><Value>cut</Value></Image></ReportItems></PageHeader>";
}

// The formats that carry an image unchanged would leave the damage to the reader of the document.
TEST_F(Limits, ADamagedImageIsReportedByTheErrorAloneInEveryFormat) {
    const auto report = OpenPeople(
        WithImage("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAABklEQVR4nGNgZGIAGGFnAAAAAElFTkSuQmCC"));
    for (const report::FormatRow& row : report::FormatTable) {
        if (row.format == report::DocumentFormat::Csv) {
            continue;  // has no images
        }
        SCOPED_TRACE(row.word);
        report->SetHtmlFileName(paths::FromMachine(Path("out.pdf")));
        testing::internal::CaptureStderr();
        const RuntimeError error = ExportError(*report, row.Code());
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(error.Description(), "Image \"logo\" is damaged and cannot be read");
    }
}

TEST_F(Limits, AnImageWithoutBytesIsAnErrorInEveryFormat) {
    const auto embedded = OpenPeople(WithImage(""));
    Write("cut", "");
    const auto external = OpenPeople(WithImage("", "External"));
    for (const report::FormatRow& row : report::FormatTable) {
        if (row.format == report::DocumentFormat::Csv) {
            continue;  // has no images
        }
        SCOPED_TRACE(row.word);
        for (const auto& report : {embedded, external}) {
            report->SetHtmlFileName(paths::FromMachine(Path("out.pdf")));
            EXPECT_EQ(ExportError(*report, row.Code()).Description(), "Image \"logo\" is empty");
        }
    }
}

TEST_F(Limits, ARunHasNoMoreThan20000Subreports) {
    Write("part.rpt", "<Report><Width>1in</Width><Body><Height>1in</Height></Body></Report>");
    std::string rows, parts;
    for (int i = 0; i < 150; ++i) {
        rows += "<Row><Name>a</Name></Row>";
        parts += "<Subreport Name=\"s" + std::to_string(i) + "\"><ReportName>part</ReportName></Subreport>";
    }
    const auto report = OpenRdlReport(Write(
        "whole.rpt",
        "<Report><Width>6in</Width><DataSets><DataSet Name=\"Rows\"><Query/><Fields><Field Name=\"Name\">"
        "<DataField>Name</DataField></Field></Fields><Rows>" +
            rows +
            "</Rows></DataSet></DataSets><Body><Height>1in</Height><ReportItems><List Name=\"l\">"
            "<DataSetName>Rows</DataSetName><Height>1in</Height><ReportItems>" +
            parts + "</ReportItems></List></ReportItems></Body></Report>"));
    EXPECT_EQ(ExportError(*report).Description(), "Subreport s50: there are more than 20000 subreports");
}

TEST_F(Limits, ADocumentMayNotGrowPastItsBound) {
    const std::string path = Path("large.html");
    FileOutput output(path, 3u << 20);
    const std::string piece(1u << 20, 'x');
    for (int i = 0; i < 3; ++i) {
        output.Write(piece);
    }
    try {
        output.Write("x");
        FAIL() << "it grew";
    } catch (const rdl::Error& error) {
        EXPECT_STREQ(error.what(), "The document is larger than 3 MB");
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace reports
