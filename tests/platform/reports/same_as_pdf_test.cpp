// SPDX-License-Identifier: GPL-3.0-or-later
// The screen shows the same as the PDF document, compared with another project's renderer.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cstdlib>

#include "platform/reports/report_folder.h"

namespace reports::test {
namespace {

constexpr int Dpi = 200;

class SameAsPdf : public ReportFolder {
 protected:
    static QImage Screen(report::PageView& pages, QSize size) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(Dpi / 72.0, Dpi / 72.0);
        pages.Draw(1, painter);
        return image;
    }
    QImage Pdf(RdlReport& report) const {
        report.SetExportDestination(report::DestinationDisk);
        report.SetExportFormat(report::CodeOf(report::DocumentFormat::Pdf));
        report.SetDiskFileName(Path("out.pdf"));
        report.Export(false);
        const std::string command = "pdftoppm -r " + std::to_string(Dpi) + " -f 1 -l 1 -singlefile -png " +
                                    Path("out.pdf") + " " + Path("out");
        if (std::system(command.c_str()) != 0) {
            return {};
        }
        return QImage(QString::fromStdString(Path("out.png"))).convertToFormat(QImage::Format_RGB32);
    }
};

// Each renderer smooths edges and lines in its own way, so areas of a millimetre are compared. Gives the
// largest difference of any colour (0 to 255) and the mean of all.
struct Difference {
    int most = 0;
    double mean = 0;
};

Difference Compare(const QImage& a, const QImage& b) {
    constexpr int Cell = 8;
    const QSize size(a.width() / Cell, a.height() / Cell);
    const auto smooth = [&](const QImage& image) {
        return image.copy(0, 0, size.width() * Cell, size.height() * Cell)
            .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage first = smooth(a), second = smooth(b);
    Difference difference;
    double sum = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QRgb p = first.pixel(x, y), q = second.pixel(x, y);
            const int most = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                       std::abs(qBlue(p) - qBlue(q))});
            difference.most = std::max(difference.most, most);
            sum += most;
        }
    }
    difference.mean = sum / (size.width() * size.height());
    return difference;
}

std::string Box(const std::string& name, int row, const std::string& value, const std::string& style) {
    return "<Textbox Name=\"" + name + "\"><Top>" + std::to_string(row * 12) +
           "mm</Top><Left>5mm</Left><Width>120mm</Width><Height>10mm</Height><Value>" + value +
           "</Value><Style>" + style + "</Style></Textbox>";
}

const std::string Page =
    "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
    "<Width>14cm</Width><PageWidth>16cm</PageWidth><PageHeight>12cm</PageHeight><LeftMargin>1cm</LeftMargin>"
    "<TopMargin>1cm</TopMargin><Body><Height>9cm</Height><ReportItems>" +
    Box("a", 0, "Plain text in a usual size, with figures 1,234.50", "") +
    Box("b", 1, "Bold and large",
        "<FontWeight>Bold</FontWeight><FontSize>18pt</FontSize><Color>White</Color>"
        "<BackgroundColor>#204060</BackgroundColor>") +
    Box("c", 2, "Slanted, underlined, in the middle",
        "<FontStyle>Italic</FontStyle><TextDecoration>Underline</TextDecoration><TextAlign>Center</TextAlign>"
        "<BorderStyle><Default>Solid</Default></BorderStyle>") +
    Box("d", 3, "Gr\u00fc\u00dfe, \u0395\u03bb\u03bb\u03ac\u03b4\u03b1, \u041f\u0440\u0438\u0432\u0435\u0442",
        "<FontFamily>Times New Roman</FontFamily><BorderStyle><Bottom>Dashed</Bottom></BorderStyle>"
        "<BorderWidth><Bottom>2pt</Bottom></BorderWidth>") +
    Box("e", 4, "Turned",
        "<WritingMode>tb-rl</WritingMode><BorderStyle><Default>Double</Default></BorderStyle>"
        "<BorderWidth><Default>3pt</Default></BorderWidth><BackgroundColor>#ffeecc</BackgroundColor>") +
    "<Line Name=\"l\"><Top>70mm</Top><Left>5mm</Left><Width>100mm</Width><Height>15mm</Height><Style>"
    "<BorderStyle><Default>Solid</Default></BorderStyle><BorderColor><Default>Red</Default></BorderColor>"
    "</Style></Line></ReportItems></Body></Report>";

TEST_F(SameAsPdf, APageOfEverythingLooksTheSame) {
    if (std::system("command -v pdftoppm >/dev/null 2>&1") != 0) {
        GTEST_SKIP() << "this machine has no program pdftoppm";
    }
    const auto report = OpenRdlReport(Write("page.rpt", Page));
    const QImage pdf = Pdf(*report);
    ASSERT_FALSE(pdf.isNull());
    const auto pages = report->OpenPages();
    ASSERT_TRUE(pages->Reach(1));
    const QImage screen = Screen(*pages, pdf.size());
    const Difference same = Compare(screen, pdf);
    EXPECT_LT(same.mean, 1.5);
    EXPECT_LT(same.most, 90);

    // The comparison is fine enough: it finds a shift of half a millimetre.
    const Difference moved = Compare(screen.copy(4, 4, screen.width() - 4, screen.height() - 4),
                                     pdf.copy(0, 0, pdf.width() - 4, pdf.height() - 4));
    EXPECT_GT(moved.mean, 1.5);
}

}  // namespace
}  // namespace reports::test
